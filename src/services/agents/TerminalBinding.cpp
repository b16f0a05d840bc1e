#include "services/agents/TerminalBinding.h"

#include "services/agents/TerminalApp.h"

#include <algorithm>

namespace quorvin {

namespace {

bool isTerminal(const QString& bundleIdentifier) {
    return std::any_of(terminalApps.begin(), terminalApps.end(),
                       [&bundleIdentifier](const TerminalApp& terminal) {
                           return terminal.bundleID == bundleIdentifier;
                       });
}

} // namespace

std::optional<QString> TerminalBinding::findTerminalForTTY(const QString& ttyPath) const {
    std::optional<QString> terminal;
    const auto holder = m_table.firstHolder(ttyPath, [this, &terminal](ProcessID pid) {
        terminal = findTerminalInParentChain(pid);
        return terminal.has_value();
    });
    // Deliberate: the fall-back need not have anything to do with the device, whose own terminal
    // may be out of reach, as that of a detached multiplexer is.
    return holder ? terminal : findAnyRunningTerminal();
}

std::optional<QString> TerminalBinding::findTerminalInParentChain(ProcessID pid) const {
    constexpr ProcessID root = 1;
    std::vector<ProcessID> visited;
    while (pid > root && std::find(visited.begin(), visited.end(), pid) == visited.end()) {
        visited.push_back(pid);
        if (auto bundleIdentifier = getProcessBundleID(pid);
            bundleIdentifier && isTerminal(*bundleIdentifier)) {
            return bundleIdentifier;
        }
        pid = m_table.parent(pid).value_or(root);
    }
    return std::nullopt;
}

std::optional<QString> TerminalBinding::getProcessBundleID(ProcessID pid) const {
    const auto found = std::find_if(m_running.begin(), m_running.end(),
                                    [pid](const RunningApplication& application) {
                                        return application.processIdentifier == pid;
                                    });
    return found == m_running.end() ? std::nullopt : found->bundleIdentifier;
}

std::optional<QString> TerminalBinding::findAnyRunningTerminal() const {
    for (const TerminalApp& terminal : terminalApps) {
        const bool isRunning = std::any_of(
            m_running.begin(), m_running.end(), [&terminal](const RunningApplication& application) {
                return application.bundleIdentifier == terminal.bundleID.toString();
            });
        if (isRunning) {
            return terminal.bundleID.toString();
        }
    }
    return std::nullopt;
}

} // namespace quorvin
