#include "services/agents/SessionScan.h"

#include "services/agents/TerminalBinding.h"

#include <QSet>

#include <optional>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Slashes at the end don't count; a path of nothing else is "/".
QString lastPathComponent(const QString& path) {
    const QString name = path.section(u'/', -1, -1, QString::SectionSkipEmpty);
    return name.isEmpty() && !path.isEmpty() ? u"/"_s : name;
}

std::optional<AgentType> agentType(const QString& command) {
    const QString name = lastPathComponent(command).toLower();
    if (name == u"claude" || name == u"claude-code" || name == u"claude_code") {
        return AgentType::claude;
    }
    if (name == u"opencode" || name == u"open-code" || name == u"open_code") {
        return AgentType::opencode;
    }
    if (name.startsWith(u"claude") && !name.contains(u"helper")) {
        return AgentType::claude;
    }
    if (name.startsWith(u"opencode")) { // deliberate: its helpers count
        return AgentType::opencode;
    }
    return std::nullopt;
}

/// The name of the working directory, or "unknown".
QString getProcessCWD(ProcessTable& table, ProcessID pid) {
    const QString path = table.workingDirectory(pid).value_or(QString());
    return path.isEmpty() || path == u"/" ? u"unknown"_s : lastPathComponent(path);
}

QString title(ProcessTable& table, ProcessID pid, AgentType type) {
    QString directory = getProcessCWD(table, pid);
    if (!directory.isEmpty() && directory != u"/" && directory != u"unknown") {
        return directory;
    }
    const QString agent = type == AgentType::claude ? u"claude"_s : u"opencode"_s;
    return u"%1 (pid %2)"_s.arg(agent).arg(pid);
}

} // namespace

AgentSessions scanSessions(ProcessTable& table, const std::vector<RunningApplication>& running) {
    const TerminalBinding binding(table, running);
    AgentSessions sessions;
    QSet<QString> seenTTYs;
    for (const ProcessRow& row : table.rows().value_or(std::vector<ProcessRow>())) {
        const auto type = agentType(row.command);
        if (!type || !row.terminal) {
            continue;
        }
        const QString tty = u"/dev/"_s + *row.terminal;
        if (seenTTYs.contains(tty)) {
            continue;
        }
        seenTTYs.insert(tty);
        auto& list = *type == AgentType::claude ? sessions.claude : sessions.opencode;
        list.append({.id = row.processIdentifier,
                     .pid = row.processIdentifier,
                     .type = *type,
                     .title = title(table, row.processIdentifier, *type),
                     .tty = tty,
                     .terminalBundleID = binding.findTerminalForTTY(tty)});
    }
    return sessions;
}

} // namespace quorvin
