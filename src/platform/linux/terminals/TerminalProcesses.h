#pragma once

#include "platform/Workspace.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <algorithm>
#include <map>
#include <optional>
#include <vector>

namespace quorvin {

/// What is known of a terminal device by the processes on it.
struct TerminalSession {
    QString tty;
    /// What the terminal gave its first process on the device; empty when that may not be read.
    QHash<QByteArray, QByteArray> environment;
    /// From the parent of that process up. The terminal is among them, but for a multiplexer.
    std::vector<ProcessID> ancestors;

    [[nodiscard]] bool descendsFrom(ProcessID process) const {
        return std::find(ancestors.begin(), ancestors.end(), process) != ancestors.end();
    }
};

/// The processes and their terminal devices as they were when this was made.
class TerminalProcesses {
public:
    /// `directory` is where the kernel shows the processes.
    explicit TerminalProcesses(QString directory);

    /// Absent when no process is on `tty`, a full path.
    [[nodiscard]] std::optional<TerminalSession> sessionOn(const QString& tty) const;
    [[nodiscard]] bool isOn(ProcessID process, const QString& tty) const;

private:
    struct Process {
        ProcessID parent = 0;
        QString tty; // empty for none
    };

    [[nodiscard]] std::vector<ProcessID> ancestorsOf(ProcessID process) const;
    [[nodiscard]] QHash<QByteArray, QByteArray> environmentOf(ProcessID process) const;

    QString m_directory;
    std::map<ProcessID, Process> m_processes;
};

} // namespace quorvin
