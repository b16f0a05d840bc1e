#pragma once

#include "platform/linux/terminals/TerminalWindows.h"
#include "platform/linux/x11/X11Workspace.h"

namespace quorvin {

/// The windows of an X11 desktop. None while the display can't be reached.
class X11TerminalWindows final : public TerminalWindows {
public:
    /// Both outlive this.
    X11TerminalWindows(XcbConnection& connection, X11Workspace& workspace)
        : m_connection(connection), m_workspace(workspace) {}

    [[nodiscard]] std::vector<TerminalWindow> windows() override;
    void raise(WindowID window) override;
    [[nodiscard]] std::uint32_t time() override;

private:
    XcbConnection& m_connection;
    X11Workspace& m_workspace;
};

} // namespace quorvin
