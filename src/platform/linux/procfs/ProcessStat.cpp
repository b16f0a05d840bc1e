#include "platform/linux/procfs/ProcessStat.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

std::optional<ProcessStat> parseProcessStat(const QByteArray& line) {
    // "pid (name) state ppid pgrp session tty_nr ...": the name may hold parentheses and blanks.
    const qsizetype begin = line.indexOf('(') + 1;
    const qsizetype end = line.lastIndexOf(')');
    if (begin == 0 || end < begin) {
        return std::nullopt;
    }
    ProcessStat stat;
    int device = 0;
    if (std::sscanf(line.constData() + end + 1, " %*c %d %*d %*d %d", &stat.parent, &device) != 2) {
        return std::nullopt;
    }
    stat.name = line.mid(begin, end - begin);
    stat.terminalDevice = static_cast<std::uint32_t>(device);
    return stat;
}

std::optional<QString> terminalName(std::uint32_t device) {
    // The minor number's low byte stands below the twelve bits of the major number, its rest above.
    const std::uint32_t major = (device >> 8) & 0xfff;
    const std::uint32_t minor = (device & 0xff) | ((device >> 12) & 0xfff00);
    constexpr std::uint32_t firstPtsMajor = 136;
    constexpr std::uint32_t lastPtsMajor = 143;
    if (major >= firstPtsMajor && major <= lastPtsMajor) {
        return u"pts/%1"_s.arg((major - firstPtsMajor) * 256 + minor);
    }
    // Pseudo terminals aside, every device has a link that ends in its name.
    const QString target = QFile::symLinkTarget(u"/sys/dev/char/%1:%2"_s.arg(major).arg(minor));
    return target.isEmpty() ? std::nullopt : std::optional(QFileInfo(target).fileName());
}

} // namespace quorvin
