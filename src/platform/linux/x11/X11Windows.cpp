#include "platform/linux/x11/X11Windows.h"

#include "platform/linux/x11/WindowIdentity.h"
#include "platform/linux/x11/XcbProperty.h"

#include <xcb/xcb_icccm.h>

namespace quorvin {

namespace {

/// The properties of one window, all asked for at once.
class WindowRequest {
public:
    WindowRequest(XcbConnection& connection, xcb_window_t window)
        : m_window(window)
        , m_process(request(connection, connection.ewmh()->_NET_WM_PID))
        , m_machine(request(connection, XCB_ATOM_WM_CLIENT_MACHINE))
        , m_class(request(connection, XCB_ATOM_WM_CLASS))
        , m_title(request(connection, connection.ewmh()->_NET_WM_NAME))
        , m_oldTitle(request(connection, XCB_ATOM_WM_NAME))
        , m_userTime(request(connection, connection.ewmh()->_NET_WM_USER_TIME))
        , m_userTimeWindow(request(connection, connection.ewmh()->_NET_WM_USER_TIME_WINDOW))
        , m_state(request(connection, connection.wmState())) {}

    X11Window take(XcbConnection& connection) {
        const auto number = m_process.number();
        const QString machine = m_machine.text();
        const windowIdentity::Names names = windowIdentity::names(m_class.bytes());
        const QString title = m_title.text();
        const QString oldTitle = m_oldTitle.text();
        auto userTime = m_userTime.number();
        // A program may keep the time at a window of its own, so as not to wake the window manager
        // at each key.
        if (const auto keeper = m_userTimeWindow.number(); keeper && !userTime) {
            userTime =
                XcbProperty(connection.handle(), *keeper, connection.ewmh()->_NET_WM_USER_TIME)
                    .number();
        }
        return {.window = m_window,
                .processIdentifier = windowIdentity::process(number, machine),
                .instanceName = names.instanceName,
                .className = names.className,
                .title = title.isEmpty() ? oldTitle : title,
                .userTime = userTime,
                .isIconic = m_state.number() == XCB_ICCCM_WM_STATE_ICONIC};
    }

private:
    XcbProperty request(XcbConnection& connection, xcb_atom_t property) const {
        return {connection.handle(), m_window, property};
    }

    xcb_window_t m_window;
    XcbProperty m_process;
    XcbProperty m_machine;
    XcbProperty m_class;
    XcbProperty m_title;
    XcbProperty m_oldTitle;
    XcbProperty m_userTime;
    XcbProperty m_userTimeWindow;
    XcbProperty m_state;
};

} // namespace

bool X11Windows::isManaged() {
    // The manager's own window must say the same as the root: the root's properties outlive it.
    const auto check = m_connection.ewmh()->_NET_SUPPORTING_WM_CHECK;
    const auto manager = XcbProperty(m_connection.handle(), m_connection.root(), check).number();
    return manager && XcbProperty(m_connection.handle(), *manager, check).number() == manager;
}

std::vector<xcb_window_t> X11Windows::clients() {
    return isManaged() ? windowsIn(m_connection.ewmh()->_NET_CLIENT_LIST) : shownOnRoot();
}

std::vector<xcb_window_t> X11Windows::stacking() {
    return isManaged() ? windowsIn(m_connection.ewmh()->_NET_CLIENT_LIST_STACKING) : shownOnRoot();
}

std::vector<xcb_window_t> X11Windows::windowsIn(xcb_atom_t rootProperty) {
    return XcbProperty(m_connection.handle(), m_connection.root(), rootProperty).numbers();
}

std::vector<xcb_window_t> X11Windows::shownOnRoot() {
    const XcbReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        m_connection.handle(), xcb_query_tree_unchecked(m_connection.handle(), m_connection.root()),
        nullptr));
    if (!tree) {
        return {};
    }
    const std::span children(xcb_query_tree_children(tree.get()), tree->children_len);
    std::vector<xcb_get_window_attributes_cookie_t> cookies;
    for (const xcb_window_t child : children) {
        cookies.push_back(xcb_get_window_attributes_unchecked(m_connection.handle(), child));
    }
    std::vector<xcb_window_t> shown;
    for (std::size_t i = 0; i < cookies.size(); ++i) {
        const XcbReply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(m_connection.handle(), cookies[i], nullptr));
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
            attributes->override_redirect == 0) {
            shown.push_back(children[i]);
        }
    }
    return shown;
}

xcb_window_t X11Windows::active() {
    if (isManaged()) {
        return XcbProperty(m_connection.handle(), m_connection.root(),
                           m_connection.ewmh()->_NET_ACTIVE_WINDOW)
            .number()
            .value_or(XCB_WINDOW_NONE);
    }
    const XcbReply<xcb_get_input_focus_reply_t> focus(xcb_get_input_focus_reply(
        m_connection.handle(), xcb_get_input_focus_unchecked(m_connection.handle()), nullptr));
    if (!focus || focus->focus <= XCB_INPUT_FOCUS_POINTER_ROOT) {
        return XCB_WINDOW_NONE;
    }
    return topLevelOf(focus->focus);
}

xcb_window_t X11Windows::topLevelOf(xcb_window_t window) {
    for (;;) {
        const XcbReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_connection.handle(),
                                 xcb_query_tree_unchecked(m_connection.handle(), window), nullptr));
        if (!tree || tree->parent == XCB_WINDOW_NONE) {
            return XCB_WINDOW_NONE; // gone, or the root itself
        }
        if (tree->parent == m_connection.root()) {
            return window;
        }
        window = tree->parent;
    }
}

std::vector<X11Window> X11Windows::describe(std::span<const xcb_window_t> windows) {
    std::vector<WindowRequest> requests;
    requests.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        requests.emplace_back(m_connection, window);
    }
    std::vector<X11Window> described;
    described.reserve(windows.size());
    for (WindowRequest& request : requests) {
        described.push_back(request.take(m_connection));
    }
    return described;
}

} // namespace quorvin
