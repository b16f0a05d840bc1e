#pragma once

#include "platform/linux/x11/XcbReply.h"

#include <QByteArray>
#include <QObject>

#include <deque>
#include <memory>

#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>

class QSocketNotifier;

namespace quorvin {

/// The program's own connection to the X server, beside the one of the toolkit. A display that
/// can't be reached, or goes away later, only means that `isOpen` is false. Main thread only.
class XcbConnection final : public QObject {
    Q_OBJECT
public:
    /// `display` as in the variable DISPLAY, whose value is taken when it is empty.
    explicit XcbConnection(const QByteArray& display = {});
    ~XcbConnection() override;

    [[nodiscard]] bool isOpen() const;

    /// Never null; every request to a connection that isn't open fails by itself.
    [[nodiscard]] xcb_connection_t* handle() const { return m_handle; }

    // The rest is there only while the connection is open, or has been.
    [[nodiscard]] xcb_window_t root() const { return m_screen->root; }
    [[nodiscard]] int screenNumber() const { return m_screenNumber; }
    /// The atoms of the window manager's protocol.
    [[nodiscard]] xcb_ewmh_connection_t* ewmh() { return &m_ewmh; }
    [[nodiscard]] xcb_atom_t wmState() const { return m_wmState; }

    /// The X server's present time, in milliseconds of its own clock; waits for the server.
    /// Requests that carry an older time than the last user action are refused by window managers.
    [[nodiscard]] xcb_timestamp_t serverTime();

    /// The window whose activation was requested and has not been seen yet; none for nothing to
    /// wait for. Kept here for those who request and those who type.
    [[nodiscard]] xcb_window_t expectedActivation() const { return m_expectedActivation; }
    void expectActivation(xcb_window_t window) { m_expectedActivation = window; }

    /// Hands out the events that have arrived; done by the event loop as well.
    void processEvents();

Q_SIGNALS:
    /// Every event but the errors of requests that nobody waits for. Property changes of the root
    /// window are always among them; a further mask for the root window belongs into the
    /// constructor, since a client has one mask a window.
    void eventReceived(const xcb_generic_event_t& event);

private:
    using Event = XcbReply<xcb_generic_event_t>;

    void setUp();
    void internAtoms();
    [[nodiscard]] Event nextEvent();

    int m_screenNumber = 0; // before the connection, which fills it
    xcb_connection_t* m_handle = nullptr;
    xcb_screen_t* m_screen = nullptr;
    xcb_ewmh_connection_t m_ewmh{};
    xcb_atom_t m_wmState = XCB_ATOM_NONE;
    xcb_window_t m_expectedActivation = XCB_WINDOW_NONE;
    xcb_window_t m_clock = XCB_WINDOW_NONE; // never shown; its property changes carry the time
    std::deque<Event> m_waiting;            // arrived while somebody waited for another event
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace quorvin
