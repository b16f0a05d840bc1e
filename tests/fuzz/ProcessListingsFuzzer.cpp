#include "fuzz/Fuzzing.h"
#include "services/agents/CommandProcessTable.h"
#include "services/agents/SessionScan.h"
#include "services/agents/TerminalApp.h"

#include <QSet>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::Parts;
using quorvin::testing::require;

namespace {

/// What ps and lsof print, by what they are asked for.
BlockingCommand commandsThatPrint(const Parts& parts) {
    return [parts](const QString& program, const QStringList& arguments) {
        if (program == linuxProcessTools().ps) {
            return std::optional(arguments.contains(u"ppid="_s) ? parts[1] : parts[0]);
        }
        return std::optional(arguments.contains(u"cwd"_s) ? parts[2] : parts[3]);
    };
}

QByteArray line(const ProcessRow& row) {
    const QString terminal = row.terminal.value_or(u"?"_s);
    return (QString::number(row.processIdentifier) + u' ' + row.command + u' ' + terminal).toUtf8();
}

void rowsReadBack(const std::vector<ProcessRow>& rows) {
    QByteArray listing = "    PID COMMAND         TT\n";
    for (const ProcessRow& row : rows) {
        require(!row.command.isEmpty(), "a row has a command");
        require(row.terminal != u"?" && row.terminal != u"??", "no terminal is absent");
        listing += line(row) + '\n';
    }
    CommandProcessTable table(
        [&listing](const QString&, const QStringList&) { return std::optional(listing); },
        linuxProcessTools());
    require(table.rows() == rows, "rows read back as they were written");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Parts parts(data, size); // the processes, a parent, a directory, the holders of a tty
    CommandProcessTable table(commandsThatPrint(parts), linuxProcessTools());
    const auto rows = table.rows();
    require(rows.has_value(), "a listing is one, whatever its lines are");
    rowsReadBack(*rows);

    const auto directory = table.workingDirectory(7);
    require(!directory || directory->startsWith(u'/'), "a directory is an absolute path");
    std::ignore = table.parent(7);
    const auto holder = table.firstHolder(u"/dev/pts/3"_s, [](ProcessID pid) { return pid > 1; });
    require(!holder || *holder > 1, "a holder is one that is wanted");

    std::vector<RunningApplication> running;
    for (const ProcessRow& row : *rows) {
        running.push_back({row.processIdentifier, row.command, row.terminal});
    }
    running.push_back({7, u"Terminal"_s, terminalApps.front().bundleID.toString()});
    const AgentSessions sessions = scanSessions(table, running);
    QSet<QString> ttys;
    for (const AgentSessionInfo& session : sessions.claude + sessions.opencode) {
        require(session.tty && session.tty->startsWith(u"/dev/"), "a session has a device");
        require(!ttys.contains(*session.tty), "and no other session has it");
        ttys.insert(*session.tty);
        require(!session.title.isEmpty(), "a session has a title");
        require(session.terminalBundleID.has_value(), "and a terminal, when one runs");
    }
    return 0;
}
