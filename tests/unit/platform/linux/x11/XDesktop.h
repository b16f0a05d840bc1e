#pragma once

#include "platform/Workspace.h"
#include "platform/linux/x11/XcbReply.h"
#include "support/XServer.h"

#include <QByteArray>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <vector>

#include <xcb/xcb.h>

namespace quorvin::testing {

/// The test's own connection to its X server: makes windows and watches the desktop.
class XDesktop {
public:
    struct WindowOptions {
        /// What the window says of its process, if anything.
        std::optional<ProcessID> pid = std::nullopt;
        QByteArray machine = {};
        QByteArray instanceName = {};
        QByteArray className = {};
        QByteArray title = {};
        std::optional<std::uint32_t> userTime = std::nullopt;
        /// Whether the user time is kept at a window of its own.
        bool hasUserTimeWindow = false;
    };

    explicit XDesktop(const QByteArray& display);
    ~XDesktop();
    XDesktop(const XDesktop&) = delete;
    XDesktop& operator=(const XDesktop&) = delete;

    /// Starts a program on this desktop; it is ended with this object.
    QProcess& start(const QString& program, const QStringList& arguments);
    /// Starts the window manager and waits for it.
    [[nodiscard]] bool startManager();
    /// Ends it, at once.
    void killManager();
    /// Starts a terminal, waits for its window and gives its process id; 0 when none came.
    [[nodiscard]] ProcessID startTerminal(const QStringList& arguments = {});

    /// Shows a window of 100 by 100 and, where there is a window manager, waits until it manages
    /// it.
    xcb_window_t open(const WindowOptions& options);
    void close(xcb_window_t window);
    void hide(xcb_window_t window);
    void iconify(xcb_window_t window);
    /// Asks the window manager for something about a window, as a pager does.
    void sendToRoot(xcb_window_t window, const char* type, std::uint32_t first,
                    std::uint32_t second);
    /// Gives a window the keyboard focus as its user would, and waits until it has it.
    [[nodiscard]] bool focus(xcb_window_t window);

    [[nodiscard]] bool hasFocus(xcb_window_t window);
    /// Whether `window` is above `other`, both being shown on the root window itself.
    [[nodiscard]] bool isAbove(xcb_window_t window, xcb_window_t other);
    /// The same as the window manager sees it.
    [[nodiscard]] bool isAboveManaged(xcb_window_t window, xcb_window_t other);
    [[nodiscard]] bool isShown(xcb_window_t window);
    /// The windows that the window manager lists; empty without one.
    [[nodiscard]] std::vector<xcb_window_t> managed();

    /// Looks at `condition` each time that something happens; false when it hasn't come true within
    /// ten seconds. The program's own events are handled meanwhile.
    [[nodiscard]] bool waitUntil(const std::function<bool()>& condition);

    [[nodiscard]] xcb_connection_t* handle() { return m_handle; }
    [[nodiscard]] xcb_window_t root() const { return m_root; }
    [[nodiscard]] xcb_atom_t atom(const char* name);

private:
    void setNumber(xcb_window_t window, const char* property, xcb_atom_t type, std::uint32_t value);
    void setText(xcb_window_t window, xcb_atom_t property, const QByteArray& text);
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window, const char* property);

    QByteArray m_display;
    QTemporaryDir m_home;
    xcb_connection_t* m_handle;   // for requests
    xcb_connection_t* m_observer; // for the root window's events, and nothing else
    xcb_window_t m_root = XCB_WINDOW_NONE;
    std::vector<std::unique_ptr<QProcess>> m_processes;
    QProcess* m_manager = nullptr;
};

} // namespace quorvin::testing
