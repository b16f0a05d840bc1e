#pragma once

#include "platform/Workspace.h"
#include "platform/linux/x11/X11Windows.h"

#include <QObject>

#include <vector>

namespace quorvin {

/// The applications of an X11 desktop, told apart by the processes of their windows. Without a
/// reachable display there are none.
class X11Workspace final : public QObject, public Workspace {
public:
    /// `connection` outlives this. `userGuideDirectory` holds the pages that stand in for a
    /// system's settings pages.
    X11Workspace(XcbConnection& connection, QString userGuideDirectory);

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override;
    /// In the order in which the window manager lists their first windows.
    [[nodiscard]] std::vector<RunningApplication> runningApplications() override;
    /// Of a process with many windows, the one that was focused last.
    Request activate(ProcessID processIdentifier) override;
    /// The same for one window, whosever it is.
    Request activateWindow(xcb_window_t window);
    /// Settings pages, web pages and files; nothing else is possible.
    Request openURL(const QString& url) override;

private:
    void handleEvent(const xcb_generic_event_t& event);
    void recordFocus();
    [[nodiscard]] X11Window mostRecent(const std::vector<X11Window>& windows);
    [[nodiscard]] Request raise(const X11Window& window);
    [[nodiscard]] Request focusDirectly(xcb_window_t window);

    XcbConnection& m_connection;
    X11Windows m_windows;
    QString m_userGuideDirectory;
    std::vector<xcb_window_t> m_focusHistory; // the last focused window first
};

} // namespace quorvin
