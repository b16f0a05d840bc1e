#include "platform/linux/x11/X11Workspace.h"

#include "platform/linux/x11/ApplicationIdentifiers.h"
#include "platform/linux/x11/UserGuidePages.h"

#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>
#include <array>
#include <tuple>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace {

QString executableName(ProcessID processIdentifier) {
    QString path = QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(processIdentifier));
    // The kernel's mark at a program whose file was replaced while it runs.
    if (constexpr QStringView deleted = u" (deleted)"; path.endsWith(deleted)) {
        path.chop(deleted.size());
    }
    return QFileInfo(path).fileName();
}

std::optional<RunningApplication> applicationOf(const X11Window& window) {
    if (!window.processIdentifier) {
        return std::nullopt;
    }
    RunningApplication application;
    application.processIdentifier = *window.processIdentifier;
    const QString& name = window.className.isEmpty() ? window.title : window.className;
    if (!name.isEmpty()) {
        application.localizedName = name;
    }
    application.bundleIdentifier = terminalBundleIdentifier(
        window.instanceName, window.className, executableName(*window.processIdentifier));
    return application;
}

} // namespace

X11Workspace::X11Workspace(XcbConnection& connection, QString userGuideDirectory)
    : m_connection(connection)
    , m_windows(connection)
    , m_userGuideDirectory(std::move(userGuideDirectory)) {
    connect(&connection, &XcbConnection::eventReceived, this, &X11Workspace::handleEvent);
    recordFocus();
}

std::optional<RunningApplication> X11Workspace::frontmostApplication() {
    if (!m_connection.isOpen()) {
        return std::nullopt;
    }
    const std::array active{m_windows.active()};
    return active[0] == XCB_WINDOW_NONE ? std::nullopt
                                        : applicationOf(m_windows.describe(active)[0]);
}

std::vector<RunningApplication> X11Workspace::runningApplications() {
    std::vector<RunningApplication> applications;
    if (!m_connection.isOpen()) {
        return applications;
    }
    for (const X11Window& window : m_windows.describe(m_windows.clients())) {
        const bool isKnown = std::any_of(
            applications.begin(), applications.end(), [&window](const RunningApplication& known) {
                return known.processIdentifier == window.processIdentifier;
            });
        if (auto application = isKnown ? std::nullopt : applicationOf(window)) {
            applications.push_back(std::move(*application));
        }
    }
    return applications;
}

Workspace::Request X11Workspace::activate(ProcessID processIdentifier) {
    if (!m_connection.isOpen()) {
        return Request::notPossibleHere;
    }
    std::vector<X11Window> windows = m_windows.describe(m_windows.clients());
    std::erase_if(windows, [processIdentifier](const X11Window& window) {
        return window.processIdentifier != processIdentifier;
    });
    if (windows.empty()) {
        return Request::notPossibleHere;
    }
    recordFocus(); // the notice of the last change may not have been read yet
    return raise(mostRecent(windows));
}

Workspace::Request X11Workspace::activateWindow(xcb_window_t window) {
    if (!m_connection.isOpen()) {
        return Request::notPossibleHere;
    }
    const std::array wanted{window};
    return raise(m_windows.describe(wanted)[0]);
}

X11Window X11Workspace::mostRecent(const std::vector<X11Window>& windows) {
    const std::vector<xcb_window_t> stacking = m_windows.stacking();
    const auto placeIn = [](const std::vector<xcb_window_t>& list, xcb_window_t window) {
        return std::find(list.begin(), list.end(), window) - list.begin();
    };
    // What was focused under our eyes comes before what the program says of its user's actions, and
    // that before the mere height on the screen.
    const auto isLessRecent = [&](const X11Window& left, const X11Window& right) {
        const auto leftPlace = placeIn(m_focusHistory, left.window);
        const auto rightPlace = placeIn(m_focusHistory, right.window);
        if (leftPlace != rightPlace) {
            return leftPlace > rightPlace;
        }
        if (left.userTime != right.userTime) {
            // The difference, for the count wraps around.
            return !left.userTime || (right.userTime && static_cast<std::int32_t>(
                                                            *right.userTime - *left.userTime) > 0);
        }
        return placeIn(stacking, left.window) < placeIn(stacking, right.window);
    };
    return *std::max_element(windows.begin(), windows.end(), isLessRecent);
}

Workspace::Request X11Workspace::raise(const X11Window& window) {
    if (!m_windows.isManaged()) {
        return focusDirectly(window.window);
    }
    if (window.isIconic) {
        xcb_map_window(m_connection.handle(), window.window);
    }
    xcb_ewmh_request_change_active_window(m_connection.ewmh(), m_connection.screenNumber(),
                                          window.window, XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER,
                                          m_connection.serverTime(), XCB_WINDOW_NONE);
    xcb_flush(m_connection.handle());
    m_connection.expectActivation(window.window);
    return Request::made;
}

Workspace::Request X11Workspace::focusDirectly(xcb_window_t window) {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    const auto raise = xcb_configure_window_checked(m_connection.handle(), window,
                                                    XCB_CONFIG_WINDOW_STACK_MODE, &above);
    const auto focus = xcb_set_input_focus_checked(
        m_connection.handle(), XCB_INPUT_FOCUS_POINTER_ROOT, window, m_connection.serverTime());
    // The window may have gone or been hidden by now.
    const XcbReply<xcb_generic_error_t> raiseError(xcb_request_check(m_connection.handle(), raise));
    const XcbReply<xcb_generic_error_t> focusError(xcb_request_check(m_connection.handle(), focus));
    return raiseError || focusError ? Request::notPossibleHere : Request::made;
}

Workspace::Request X11Workspace::openURL(const QString& url) {
    const auto page = userGuidePage(url, m_userGuideDirectory);
    const QUrl target = page ? *page : QUrl(url, QUrl::StrictMode);
    const QString scheme = target.scheme();
    const bool isDocument = scheme == u"http" || scheme == u"https" || scheme == u"file";
    return isDocument && target.isValid() && QDesktopServices::openUrl(target)
               ? Request::made
               : Request::notPossibleHere;
}

void X11Workspace::handleEvent(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY) {
        return;
    }
    const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    const xcb_ewmh_connection_t& ewmh = *m_connection.ewmh();
    if (notice.window == m_connection.root() &&
        (notice.atom == ewmh._NET_ACTIVE_WINDOW || notice.atom == ewmh._NET_CLIENT_LIST)) {
        recordFocus();
    }
}

void X11Workspace::recordFocus() {
    if (!m_connection.isOpen()) {
        return;
    }
    // The X server gives the number of a closed window to a new one.
    const std::vector<xcb_window_t> clients = m_windows.clients();
    const xcb_window_t active = m_windows.active();
    std::erase_if(m_focusHistory, [&clients, active](xcb_window_t window) {
        return window == active ||
               std::find(clients.begin(), clients.end(), window) == clients.end();
    });
    if (active != XCB_WINDOW_NONE) {
        m_focusHistory.insert(m_focusHistory.begin(), active);
    }
}

} // namespace quorvin
