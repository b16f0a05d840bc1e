#include "platform/linux/x11/X11TextSelections.h"

#include "platform/Scheduler.h"
#include "platform/linux/x11/PropertyReply.h"

#include <QPointer>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string_view>
#include <utility>

namespace quorvin {

namespace {

constexpr auto silence = std::chrono::seconds(1);
/// No draft is that long; an owner that never ends is not followed further.
constexpr std::uint32_t largestText = 16 * 1024 * 1024; // bytes

xcb_atom_t internAtom(xcb_connection_t* connection, std::string_view name) {
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection, xcb_intern_atom_unchecked(connection, 0, name.size(), name.data()), nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

} // namespace

X11TextSelections::X11TextSelections(Scheduler& scheduler, XcbConnection& connection)
    : m_scheduler(scheduler), m_connection(connection) {
    connect(&connection, &XcbConnection::eventReceived, this, &X11TextSelections::handle);
}

X11TextSelections::~X11TextSelections() {
    while (!m_requests.empty()) {
        finish(m_requests.begin(), std::nullopt);
    }
}

Task<std::optional<QString>> X11TextSelections::selectedText() {
    return read(XCB_ATOM_PRIMARY);
}

Task<std::optional<QString>> X11TextSelections::pasteboardText() {
    if (m_clipboard == XCB_ATOM_NONE) {
        m_clipboard = internAtom(m_connection.handle(), "CLIPBOARD");
    }
    return read(m_clipboard);
}

Task<std::optional<QString>> X11TextSelections::read(xcb_atom_t selection) {
    if (!m_connection.isOpen()) {
        co_return std::nullopt;
    }
    xcb_connection_t* const connection = m_connection.handle();
    if (m_incremental == XCB_ATOM_NONE) {
        m_incremental = internAtom(connection, "INCR");
    }
    const xcb_timestamp_t now = m_connection.serverTime();
    Request& request = m_requests.emplace_back();
    request.window = xcb_generate_id(connection);
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection, 0, request.window, m_connection.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    xcb_convert_selection(connection, request.window, selection, m_connection.ewmh()->UTF8_STRING,
                          selection, now);
    xcb_flush(connection);
    giveUpWhenSilent(request.window);
    const Pending<std::optional<QString>> answer = request.answer;
    co_return co_await answer;
}

void X11TextSelections::giveUpWhenSilent(xcb_window_t window) {
    m_scheduler.postDelayed(silence, [self = QPointer(this), window] {
        if (!self) {
            return;
        }
        const auto request = self->requestOf(window);
        if (request == self->m_requests.end()) {
            return;
        }
        if (request->received.size() == request->sizeAtLastLook) {
            self->finish(request, std::nullopt);
            return;
        }
        request->sizeAtLastLook = request->received.size();
        self->giveUpWhenSilent(window);
    });
}

void X11TextSelections::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
    case XCB_SELECTION_NOTIFY: {
        const auto& notice = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
        const auto request = requestOf(notice.requestor);
        if (request == m_requests.end()) {
            return;
        }
        if (notice.property == XCB_ATOM_NONE) { // nobody owns it, or not as text
            finish(request, std::nullopt);
        } else {
            takeAnswer(request, notice.property);
        }
        return;
    }
    case XCB_PROPERTY_NOTIFY: {
        const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        const auto request = requestOf(notice.window);
        if (request != m_requests.end() && request->isIncremental &&
            notice.state == XCB_PROPERTY_NEW_VALUE) {
            takePart(request, notice.atom);
        }
        return;
    }
    default:
        return;
    }
}

void X11TextSelections::takeAnswer(Requests::iterator request, xcb_atom_t property) {
    const auto reply = take(*request, property);
    if (reply && reply->type == m_incremental) {
        request->isIncremental = true; // its deletion asks for the first part
    } else if (reply) {
        finish(request, QString::fromUtf8(propertyReply::bytes(reply.get())));
    } else {
        finish(request, std::nullopt);
    }
}

void X11TextSelections::takePart(Requests::iterator request, xcb_atom_t property) {
    const auto reply = take(*request, property);
    const QByteArray part = propertyReply::bytes(reply.get());
    request->received.append(part);
    if (part.isEmpty() || request->received.size() > largestText) {
        finish(request, QString::fromUtf8(request->received));
    }
}

void X11TextSelections::finish(Requests::iterator request, std::optional<QString> text) {
    xcb_destroy_window(m_connection.handle(), request->window);
    xcb_flush(m_connection.handle());
    Pending<std::optional<QString>> answer = request->answer;
    m_requests.erase(request); // before the waiter goes on, which may ask again
    answer.resolve(std::move(text));
}

X11TextSelections::Requests::iterator X11TextSelections::requestOf(xcb_window_t window) {
    return std::find_if(m_requests.begin(), m_requests.end(),
                        [window](const Request& request) { return request.window == window; });
}

XcbReply<xcb_get_property_reply_t> X11TextSelections::take(const Request& request,
                                                           xcb_atom_t property) {
    xcb_connection_t* const connection = m_connection.handle();
    XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection,
        xcb_get_property_unchecked(connection, 1, request.window, property,
                                   XCB_GET_PROPERTY_TYPE_ANY, 0, largestText / 4),
        nullptr));
    xcb_flush(connection);
    return reply;
}

} // namespace quorvin
