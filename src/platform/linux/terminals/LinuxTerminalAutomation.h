#pragma once

#include "platform/TerminalAutomation.h"
#include "platform/linux/terminals/SessionBus.h"
#include "platform/linux/terminals/TabControl.h"
#include "platform/linux/terminals/TmuxPanes.h"

#include <memory>
#include <vector>

namespace quorvin {

/// Finds the window, the tab and the pane that show a terminal device, through what the terminal
/// itself offers:
///
///   tmux            the pane, then what shows its client
///   kitty           the tab, where the user has switched remote control on and given it a socket
///   Konsole         the tab, over D-Bus
///   GNOME Terminal  the tab, over D-Bus, where the user has switched shell integration on
///   others          the window that the terminal has told its programs (WINDOWID), or the one that
///                   its process used last; the tab in front gets what is typed
///
/// Which terminal it is follows from the processes, not from the bundle identifier.
class LinuxTerminalAutomation final : public TerminalAutomation {
public:
    /// What a test replaces.
    struct System {
        QDBusConnection sessionBus;
        QString tmux;             ///< path of the program; empty when there is none
        QString processDirectory; ///< where the kernel shows the processes
    };
    [[nodiscard]] static System thisSystem();

    /// All outlive this object.
    LinuxTerminalAutomation(Scheduler& scheduler, Workspace& workspace, TerminalWindows& windows,
                            System system);
    ~LinuxTerminalAutomation() override;

    /// Raises the window also when its tab can't be chosen. No program is asked for longer than a
    /// second at a time.
    [[nodiscard]] Task<TabFocus> focusTab(QString bundleIdentifier, QString tty) override;
    /// Whether the session bus answers within three seconds.
    [[nodiscard]] Task<bool> checkPermission() override;
    /// Nothing: no desktop asks its user about this.
    void requestPermissions() override {}

private:
    /// The session that a person sees when looking at `tty`: through panes of tmux to the terminal
    /// that shows their client. Absent when there is none.
    [[nodiscard]] Task<std::optional<TerminalSession>>
    visibleSession(QString tty, const TerminalProcesses& processes);
    [[nodiscard]] Task<TabControl::Answer> showTab(TerminalSession session,
                                                   const TerminalProcesses& processes);
    /// Raises the window of `session` and returns its process.
    std::optional<ProcessID> raiseWindow(const TerminalSession& session,
                                         const TabControl::Answer& answer);

    Workspace& m_workspace;
    TerminalWindows& m_windows;
    const System m_system;
    SessionBus m_bus;
    TmuxPanes m_tmux;
    std::vector<std::unique_ptr<TabControl>> m_controls;
    /// Ends first: the tasks that wait look at it before they use anything else here.
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace quorvin
