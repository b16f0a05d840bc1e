#pragma once

#include "platform/linux/terminals/SessionBus.h"
#include "platform/linux/terminals/TabControl.h"

namespace quorvin {

/// Konsole over D-Bus.
class KonsoleTabs final : public TabControl {
public:
    KonsoleTabs(SessionBus& bus, TerminalWindows& windows) : m_bus(bus), m_windows(windows) {}

    [[nodiscard]] Task<Answer> show(TerminalSession session,
                                    const TerminalProcesses& processes) override;

private:
    struct Process {
        QString service;
        ProcessID number;
    };

    /// The Konsole process that has started the session.
    [[nodiscard]] Task<std::optional<Process>> processOf(TerminalSession session);
    /// The number of Konsole's session on the tty, among those of one of its windows.
    [[nodiscard]] Task<std::optional<int>> sessionNumber(QString service, QString windowPath,
                                                         QString tty,
                                                         const TerminalProcesses& processes);
    /// The window of the process that was opened as the `index`th of `count`; absent when the
    /// window system counts differently.
    [[nodiscard]] std::optional<WindowID> windowAt(qsizetype index, qsizetype count,
                                                   ProcessID process);

    SessionBus& m_bus;
    TerminalWindows& m_windows;
};

} // namespace quorvin
