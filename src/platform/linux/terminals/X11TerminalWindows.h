#pragma once

#include "platform/linux/terminals/TerminalWindows.h"
#include "platform/linux/x11/X11Windows.h"

namespace quorvin {

/// The windows of an X11 desktop. None while the display can't be reached.
class X11TerminalWindows final : public TerminalWindows {
public:
    /// `connection` outlives this.
    explicit X11TerminalWindows(XcbConnection& connection)
        : m_connection(connection), m_windows(connection) {}

    [[nodiscard]] std::vector<TerminalWindow> windows() override;
    void raise(WindowID window) override;
    [[nodiscard]] std::uint32_t time() override;

private:
    XcbConnection& m_connection;
    X11Windows m_windows;
};

} // namespace quorvin
