#include "platform/linux/terminals/X11TerminalWindows.h"

namespace quorvin {

std::vector<TerminalWindow> X11TerminalWindows::windows() {
    std::vector<TerminalWindow> found;
    if (!m_connection.isOpen()) {
        return found;
    }
    X11Windows windows(m_connection);
    for (const X11Window& window : windows.describe(windows.clients())) {
        if (window.processIdentifier) {
            found.push_back({window.window, *window.processIdentifier});
        }
    }
    return found;
}

void X11TerminalWindows::raise(WindowID window) {
    m_workspace.activateWindow(window);
}

std::uint32_t X11TerminalWindows::time() {
    return m_connection.isOpen() ? m_connection.serverTime() : XCB_CURRENT_TIME;
}

} // namespace quorvin
