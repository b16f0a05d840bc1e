#include "platform/linux/x11/XcbConnection.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>

#include <string_view>
#include <utility>

namespace quorvin {

namespace {

xcb_screen_t* screenAt(const xcb_setup_t* setup, int number) {
    auto screens = xcb_setup_roots_iterator(setup);
    while (number-- > 0 && screens.rem > 1) {
        xcb_screen_next(&screens);
    }
    return screens.data;
}

} // namespace

XcbConnection::XcbConnection(const QByteArray& display)
    : m_handle(xcb_connect(display.isEmpty() ? nullptr : display.constData(), &m_screenNumber)) {
    if (isOpen()) {
        setUp();
    }
}

XcbConnection::~XcbConnection() {
    m_notifier.reset(); // before its descriptor is closed
    xcb_ewmh_connection_wipe(&m_ewmh);
    xcb_disconnect(m_handle);
}

bool XcbConnection::isOpen() const {
    return xcb_connection_has_error(m_handle) == 0;
}

void XcbConnection::setUp() {
    m_screen = screenAt(xcb_get_setup(m_handle), m_screenNumber);

    const std::uint32_t rootMask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_handle, root(), XCB_CW_EVENT_MASK, &rootMask);

    m_clock = xcb_generate_id(m_handle);
    const std::uint32_t clockMask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_handle, 0, m_clock, root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &clockMask);
    internAtoms(); // waits, so that nothing goes unnoticed from here on

    m_notifier =
        std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_handle), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &XcbConnection::processEvents);
    // Waiting for a reply reads the events before it off the socket, which then stays silent.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            &XcbConnection::processEvents);
}

void XcbConnection::internAtoms() {
    constexpr std::string_view wmState = "WM_STATE";
    const auto wmStateCookie =
        xcb_intern_atom_unchecked(m_handle, 0, wmState.size(), wmState.data());
    auto* const ewmhCookies = xcb_ewmh_init_atoms(m_handle, &m_ewmh);
    xcb_ewmh_init_atoms_replies(&m_ewmh, ewmhCookies, nullptr);
    const XcbReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(m_handle, wmStateCookie, nullptr));
    if (reply) {
        m_wmState = reply->atom;
    }
}

xcb_timestamp_t XcbConnection::serverTime() {
    xcb_change_property(m_handle, XCB_PROP_MODE_APPEND, m_clock, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                        8, 0, nullptr);
    xcb_flush(m_handle);
    while (Event event{xcb_wait_for_event(m_handle)}) {
        if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY) {
            const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
            if (notice.window == m_clock) {
                return notice.time;
            }
        }
        m_waiting.push_back(std::move(event));
    }
    return XCB_CURRENT_TIME; // the connection broke
}

XcbConnection::Event XcbConnection::nextEvent() {
    if (m_waiting.empty()) {
        return Event(xcb_poll_for_event(m_handle));
    }
    Event event = std::move(m_waiting.front());
    m_waiting.pop_front();
    return event;
}

void XcbConnection::processEvents() {
    while (const Event event = nextEvent()) {
        if (event->response_type != 0) { // an error: mostly a window that has gone meanwhile
            Q_EMIT eventReceived(*event);
        }
    }
    if (m_notifier && !isOpen()) {
        m_notifier->setEnabled(false); // a closed socket is readable for ever
    }
}

} // namespace quorvin
