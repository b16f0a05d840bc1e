#pragma once

#include "platform/Workspace.h"

#include <cstdint>
#include <vector>

namespace quorvin {

/// The number under which the window system and the programs on it know a window.
using WindowID = std::uint32_t;

struct TerminalWindow {
    WindowID window = 0;
    ProcessID process = 0;

    bool operator==(const TerminalWindow&) const = default;
};

/// The windows of the desktop, for the terminals among them. Main thread only.
class TerminalWindows {
public:
    TerminalWindows() = default;
    TerminalWindows(const TerminalWindows&) = delete;
    TerminalWindows& operator=(const TerminalWindows&) = delete;
    virtual ~TerminalWindows() = default;

    /// Oldest first; empty where the window system doesn't tell.
    [[nodiscard]] virtual std::vector<TerminalWindow> windows() = 0;
    /// Asks for the window to be raised and focused; returns before that has happened.
    virtual void raise(WindowID window) = 0;
    /// The window system's present time, as programs want it told when they are to raise a window
    /// of theirs; 0 when there is none.
    [[nodiscard]] virtual std::uint32_t time() = 0;
};

} // namespace quorvin
