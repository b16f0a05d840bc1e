#pragma once

#include "platform/Workspace.h"
#include "support/Task.h"

#include <QString>

#include <optional>

namespace quorvin {

/// What came of the wish to see one tab of a terminal.
struct TabFocus {
    enum class Result {
        found,        ///< the tab is in front in its terminal
        notFound,     ///< the terminal can be asked, and knows no such tab
        notScriptable ///< the terminal can't be asked for one of its tabs
    };

    Result result = Result::notScriptable;
    /// The application that shows the tab, where several processes are the same application and
    /// this one was found out; absent otherwise.
    std::optional<ProcessID> terminal;
};

/// The remote control of terminals, and the permission for it. Main thread only.
class TerminalAutomation {
public:
    TerminalAutomation() = default;
    TerminalAutomation(const TerminalAutomation&) = delete;
    TerminalAutomation& operator=(const TerminalAutomation&) = delete;
    /// Tasks that still wait end early.
    virtual ~TerminalAutomation() = default;

    /// Brings the tab whose terminal device is `tty` (a full path) to the front, in the terminal
    /// with this bundle identifier. An implementation may hold the main thread meanwhile.
    [[nodiscard]] virtual Task<TabFocus> focusTab(QString bundleIdentifier, QString tty) = 0;

    /// Whether terminals may be controlled; the answer comes within about three seconds.
    [[nodiscard]] virtual Task<bool> checkPermission() = 0;

    /// Makes the system ask the user for the permissions, where it does; returns at once.
    virtual void requestPermissions() = 0;
};

} // namespace quorvin
