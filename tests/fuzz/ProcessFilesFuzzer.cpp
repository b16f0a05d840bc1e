#include "fuzz/Fuzzing.h"
#include "fuzz/ScratchDirectory.h"
#include "platform/linux/procfs/ProcessStat.h"
#include "platform/linux/procfs/ProcfsProcessTable.h"
#include "platform/linux/terminals/TerminalProcesses.h"

#include <algorithm>

#include <unistd.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::Parts;
using quorvin::testing::require;
using quorvin::testing::ScratchDirectory;

namespace {

void statReadsBack(const ProcessStat& stat) {
    const auto signedDevice = static_cast<std::int32_t>(stat.terminalDevice);
    const QByteArray line = "7 (" + stat.name + ") S " + QByteArray::number(stat.parent) + " 1 1 " +
                            QByteArray::number(signedDevice) + " 1\n";
    const auto again = parseProcessStat(line);
    require(again && again->name == stat.name && again->parent == stat.parent &&
                again->terminalDevice == stat.terminalDevice,
            "a stat reads back as it was written");
}

bool link(const QByteArray& target, const QString& path) {
    return symlink(target.constData(), QFile::encodeName(path).constData()) == 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The stats of two processes, and the directory, a descriptor and the environment of the first.
    const Parts parts(data, size);
    if (const auto stat = parseProcessStat(parts[0])) {
        statReadsBack(*stat);
    }
    const ScratchDirectory proc;
    proc.write(u"7/stat"_s, parts[0]);
    proc.write(u"12/stat"_s, parts[1]);
    proc.write(u"7/environ"_s, parts[4]);
    proc.write(u"uptime"_s, "1 2\n");
    QDir().mkpath(proc.path(u"7/fd"_s));
    const bool hasDirectory = link(parts[2], proc.path(u"7/cwd"_s));
    std::ignore = link(parts[3], proc.path(u"7/fd/0"_s));

    ProcfsProcessTable table(QFile::encodeName(proc.path(u"."_s)));
    const auto rows = table.rows();
    require(rows && rows->size() <= 2, "there is a row for a process at most");
    for (const ProcessRow& row : *rows) {
        require(!row.command.isEmpty() && !row.command.contains(u'\n') &&
                    !row.command.contains(u' '),
                "a command is one word");
    }
    const auto directory = table.workingDirectory(7);
    require(!directory || (hasDirectory && directory->startsWith(u'/') &&
                           std::none_of(directory->begin(), directory->end(),
                                        [](QChar c) { return c < u' '; })),
            "a directory is an absolute path on one line");
    const QString device = QString::fromUtf8(parts[3].left(parts[3].indexOf('\0')));
    std::ignore = table.parent(7);
    std::ignore = table.firstHolder(device, [](ProcessID) { return true; });

    const TerminalProcesses processes(proc.path(u"."_s));
    for (const QString& tty : {u"/dev/pts/3"_s, u"/dev/tty1"_s, QString()}) {
        if (const auto session = processes.sessionOn(tty)) {
            require(session->tty == tty && !tty.isEmpty(), "a session is on its device");
            require(!session->descendsFrom(1), "and descends from no root");
            require(!session->environment.contains(QByteArray()), "a variable has a name");
        }
    }
    return 0;
}
