#include "platform/linux/terminals/X11TerminalWindows.h"

namespace quorvin {

std::vector<TerminalWindow> X11TerminalWindows::windows() {
    std::vector<TerminalWindow> windows;
    if (!m_connection.isOpen()) {
        return windows;
    }
    for (const X11Window& window : m_windows.describe(m_windows.clients())) {
        if (window.processIdentifier) {
            windows.push_back({window.window, *window.processIdentifier});
        }
    }
    return windows;
}

void X11TerminalWindows::raise(WindowID window) {
    if (!m_connection.isOpen()) {
        return;
    }
    xcb_ewmh_request_change_active_window(m_connection.ewmh(), m_connection.screenNumber(), window,
                                          XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER,
                                          m_connection.serverTime(), XCB_WINDOW_NONE);
    xcb_flush(m_connection.handle());
}

std::uint32_t X11TerminalWindows::time() {
    return m_connection.isOpen() ? m_connection.serverTime() : XCB_CURRENT_TIME;
}

} // namespace quorvin
