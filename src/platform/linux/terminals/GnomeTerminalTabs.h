#pragma once

#include "platform/linux/terminals/SessionBus.h"
#include "platform/linux/terminals/TabControl.h"

namespace quorvin {

/// GNOME Terminal over D-Bus, by way of the results that it gives to the desktop's search. It does
/// so only when the user has switched its "shell integration" on.
class GnomeTerminalTabs final : public TabControl {
public:
    GnomeTerminalTabs(SessionBus& bus, TerminalWindows& windows) : m_bus(bus), m_windows(windows) {}

    /// The terminal raises the window by itself.
    [[nodiscard]] Task<Answer> show(TerminalSession session,
                                    const TerminalProcesses& processes) override;

private:
    SessionBus& m_bus;
    TerminalWindows& m_windows;
};

} // namespace quorvin
