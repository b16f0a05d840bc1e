#pragma once

#include "platform/ProcessTable.h"
#include "platform/Workspace.h"

#include <QString>

#include <optional>
#include <vector>

namespace quorvin {

/// Tells which of the `terminalApps` owns a terminal device, by the ancestors of the processes that
/// have the device open. Blocks as the table does; one thread.
class TerminalBinding {
public:
    /// Both outlive this.
    TerminalBinding(ProcessTable& table, const std::vector<RunningApplication>& running)
        : m_table(table), m_running(running) {}

    /// A bundle identifier; absent when none of the terminals runs.
    [[nodiscard]] std::optional<QString> findTerminalForTTY(const QString& ttyPath) const;

private:
    [[nodiscard]] std::optional<QString> getProcessBundleID(ProcessID pid) const;
    [[nodiscard]] std::optional<QString> findTerminalInParentChain(ProcessID pid) const;
    [[nodiscard]] std::optional<QString> findAnyRunningTerminal() const;

    ProcessTable& m_table;
    const std::vector<RunningApplication>& m_running;
};

} // namespace quorvin
