#include "platform/UpdateScript.h"

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The text between double quotes for a shell, without a meaning left in any character.
QString doubleQuoted(QString text) {
    for (const QChar special : u"\\\"$`"_s) {
        text.replace(special, u'\\' + QString(special));
    }
    return u'"' + text + u'"';
}

QString assignment(const QString& variable, const QString& path) {
    return variable + u'=' + doubleQuoted(path);
}

} // namespace

QString UpdateScript::text(const QString& imagePath, const QString& appPath,
                           int processIdentifier) const {
    QStringList lines{u"#!/bin/bash"_s, u"set -e"_s, assignment(imageVariable, imagePath),
                      assignment(u"APP"_s, appPath)};
    lines += preparation;
    lines += u"while kill -0 %1 2>/dev/null; do sleep 0.3; done"_s.arg(processIdentifier);
    lines += replacement;
    return lines.join(u'\n');
}

UpdateScript diskImageUpdateScript() {
    return {.imageName = u"Quorvin-update.dmg"_s,
            .imageVariable = u"DMG"_s,
            .preparation = {u"MNT=$(mktemp -d /tmp/qvn_mnt.XXXXXX)"_s},
            .replacement = {u"hdiutil attach \"$DMG\" -nobrowse -mountpoint \"$MNT\" >/dev/null"_s,
                            u"cp -R \"$MNT/Quorvin.app\" \"$APP.new\""_s, u"rm -rf \"$APP\""_s,
                            u"mv \"$APP.new\" \"$APP\""_s, u"xattr -cr \"$APP\""_s,
                            u"hdiutil detach \"$MNT\" >/dev/null || true"_s, u"rm -f \"$DMG\""_s,
                            u"open \"$APP\""_s}};
}

UpdateScript archiveUpdateScript() {
    return {.imageName = u"Quorvin-update.tar.gz"_s,
            .imageVariable = u"ARCHIVE"_s,
            // The work stands beside the bundle, so that the swap is two renames. Whatever happens,
            // what is unpacked goes again, and the old bundle only when the new one stands.
            .preparation = {u"WORK=$(mktemp -d \"$APP.XXXXXX\")"_s,
                            u"trap 'rm -rf \"$WORK/new\"; rmdir \"$WORK\"' EXIT"_s,
                            u"mkdir \"$WORK/new\""_s, u"cd /"_s},
            .replacement = {
                u"tar -xzf \"$ARCHIVE\" --no-same-owner -C \"$WORK/new\""_s,
                u"test -x \"$WORK/new/Quorvin.app/bin/quorvin\""_s,
                u"chmod u+rwx \"$WORK/new/Quorvin.app\""_s, // a directory to rename is written to
                u"mv -T \"$APP\" \"$WORK/old\""_s,
                u"mv -T \"$WORK/new/Quorvin.app\" \"$APP\""_s,
                u"rm -rf \"$WORK\" || true"_s,
                u"rm -f \"$ARCHIVE\""_s,
                // Not with the signals that the way here has let it ignore.
                u"exec env --default-signal \"$APP/bin/quorvin\""_s,
            }};
}

QStringList updateLaunchArguments(QString scriptPath) {
    scriptPath.replace(u'\'', u"'\\''"_s);
    return {u"-c"_s, u"nohup bash '%1' >/dev/null 2>&1 &"_s.arg(scriptPath)};
}

} // namespace quorvin
