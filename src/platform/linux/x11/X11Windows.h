#pragma once

#include "platform/Workspace.h"
#include "platform/linux/x11/XcbConnection.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace quorvin {

/// What a program says of one of its windows.
struct X11Window {
    xcb_window_t window = XCB_WINDOW_NONE;
    /// Absent when the window names none, or one of another machine.
    std::optional<ProcessID> processIdentifier;
    QString instanceName;
    QString className;
    QString title;
    /// When its user last typed or clicked in it, in the X server's milliseconds; absent when the
    /// program keeps no count. Wraps around every 49 days.
    std::optional<std::uint32_t> userTime;
    bool isIconic = false;
};

/// Questions about the windows of the desktop; each waits for the X server once or twice. A window
/// that has gone meanwhile answers with nothing. Only for an open connection.
class X11Windows {
public:
    explicit X11Windows(XcbConnection& connection) : m_connection(connection) {}

    /// Whether a window manager that keeps the freedesktop.org protocol runs now.
    [[nodiscard]] bool isManaged();

    /// The windows of programs: the window manager's list, oldest first, or without a window
    /// manager what is shown on the root window, lowest first.
    [[nodiscard]] std::vector<xcb_window_t> clients();
    /// The same, lowest first.
    [[nodiscard]] std::vector<xcb_window_t> stacking();
    /// The window that has the keyboard focus, or none.
    [[nodiscard]] xcb_window_t active();

    [[nodiscard]] std::vector<X11Window> describe(std::span<const xcb_window_t> windows);

private:
    [[nodiscard]] std::vector<xcb_window_t> windowsIn(xcb_atom_t rootProperty);
    [[nodiscard]] std::vector<xcb_window_t> shownOnRoot();
    [[nodiscard]] xcb_window_t topLevelOf(xcb_window_t window);

    XcbConnection& m_connection;
};

} // namespace quorvin
