#pragma once

#include "platform/TerminalAutomation.h"
#include "platform/linux/terminals/TerminalProcesses.h"
#include "platform/linux/terminals/TerminalWindows.h"

#include <optional>

namespace quorvin {

/// The remote control of one kind of terminal. Main thread only.
class TabControl {
public:
    struct Answer {
        TabFocus::Result result = TabFocus::Result::notScriptable;
        /// The window that has the tab, where the terminal told it.
        std::optional<WindowID> window;
    };

    TabControl() = default;
    TabControl(const TabControl&) = delete;
    TabControl& operator=(const TabControl&) = delete;
    /// Tasks that still wait end early.
    virtual ~TabControl() = default;

    /// Selects the tab of `session` in its window. `processes` outlives the task. Not scriptable
    /// when the session isn't in a terminal of this kind, or the terminal lets nobody ask it.
    [[nodiscard]] virtual Task<Answer> show(TerminalSession session,
                                            const TerminalProcesses& processes) = 0;
};

} // namespace quorvin
