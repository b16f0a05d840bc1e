#include "platform/UpdateScript.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

QStringList lines(const UpdateScript& script, const QString& imagePath, const QString& appPath) {
    return script.text(imagePath, appPath, 4242).split(u'\n');
}

} // namespace

TEST(DiskImageUpdateScript, HoldsTheseLinesAndNoMore) {
    const UpdateScript script = diskImageUpdateScript();
    EXPECT_EQ(script.imageName, u"Quorvin-update.dmg");
    EXPECT_EQ(script.text(u"/var/folders/T/Quorvin-update.dmg"_s,
                          u"/Applications/My Apps/Quorvin.app"_s, 4242),
              uR"(#!/bin/bash
set -e
DMG="/var/folders/T/Quorvin-update.dmg"
APP="/Applications/My Apps/Quorvin.app"
MNT=$(mktemp -d /tmp/qvn_mnt.XXXXXX)
while kill -0 4242 2>/dev/null; do sleep 0.3; done
hdiutil attach "$DMG" -nobrowse -mountpoint "$MNT" >/dev/null
cp -R "$MNT/Quorvin.app" "$APP.new"
rm -rf "$APP"
mv "$APP.new" "$APP"
xattr -cr "$APP"
hdiutil detach "$MNT" >/dev/null || true
rm -f "$DMG"
open "$APP")"_s);
}

TEST(ArchiveUpdateScript, WaitsAndSwapsLikeTheOther) {
    const UpdateScript script = archiveUpdateScript();
    EXPECT_EQ(script.imageName, u"Quorvin-update.tar.gz");
    const QStringList text =
        lines(script, u"/tmp/Quorvin-update.tar.gz"_s, u"/home/me/My Apps/Quorvin.app"_s);
    EXPECT_EQ(text.mid(0, 4), (QStringList{u"#!/bin/bash"_s, u"set -e"_s,
                                           u"ARCHIVE=\"/tmp/Quorvin-update.tar.gz\""_s,
                                           u"APP=\"/home/me/My Apps/Quorvin.app\""_s}));
    EXPECT_EQ(text.count(u"while kill -0 4242 2>/dev/null; do sleep 0.3; done"_s), 1);
}

TEST(UpdateScript, PathsAreDataWhateverTheyHold) {
    for (const UpdateScript& script : {diskImageUpdateScript(), archiveUpdateScript()}) {
        const QStringList text =
            lines(script, u"/a\\b/\"$(id)\""_s, u"/`id`/'$HOME'/Quorvin.app"_s);
        EXPECT_EQ(text.at(2), script.imageVariable + uR"(="/a\\b/\"\$(id)\"")"_s);
        EXPECT_EQ(text.at(3), uR"(APP="/\`id\`/'\$HOME'/Quorvin.app")"_s);
    }
}

TEST(UpdateLaunch, StartsTheScriptInTheBackground) {
    EXPECT_EQ(
        updateLaunchArguments(u"/var/my folder/qvn_update.sh"_s),
        (QStringList{u"-c"_s, u"nohup bash '/var/my folder/qvn_update.sh' >/dev/null 2>&1 &"_s}));
}

TEST(UpdateLaunch, ThePathIsDataWhateverItHolds) {
    EXPECT_EQ(updateLaunchArguments(u"/it's %1 \"$(id)\"/qvn_update.sh"_s).at(1),
              u"nohup bash '/it'\\''s %1 \"$(id)\"/qvn_update.sh' >/dev/null 2>&1 &"_s);
}
