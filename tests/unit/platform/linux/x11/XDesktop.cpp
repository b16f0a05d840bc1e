#include "unit/platform/linux/x11/XDesktop.h"

#include "support/BoundProcess.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QProcessEnvironment>

#include <algorithm>
#include <cstring>

#include <poll.h>

namespace quorvin::testing {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int patience = 10'000; // milliseconds

void end(QProcess& process) {
    process.kill();
    process.waitForFinished(patience);
}

} // namespace

XDesktop::XDesktop(const QByteArray& display)
    : m_display(display)
    , m_handle(xcb_connect(display.constData(), nullptr))
    , m_observer(xcb_connect(display.constData(), nullptr)) {
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_handle)).data->root;
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_observer, m_root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(m_observer);
}

XDesktop::~XDesktop() {
    for (const auto& process : m_processes) {
        end(*process);
    }
    xcb_disconnect(m_observer);
    xcb_disconnect(m_handle);
}

QProcess& XDesktop::start(const QString& program, const QStringList& arguments) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, QString::fromUtf8(m_display));
    environment.insert(u"HOME"_s, m_home.path());
    auto& process = m_processes.emplace_back(std::make_unique<QProcess>());
    process->setProcessEnvironment(environment);
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    startBound(*process, QStringList{program} + arguments);
    process->waitForStarted(patience);
    return *process;
}

bool XDesktop::startManager() {
    m_manager = &start(u"openbox"_s, {});
    return waitUntil([this] { return !numbers(m_root, "_NET_SUPPORTING_WM_CHECK").empty(); });
}

void XDesktop::killManager() {
    end(*m_manager);
    m_manager = nullptr;
}

ProcessID XDesktop::startTerminal(const QStringList& arguments) {
    const auto before = managed().size();
    const auto pid = static_cast<ProcessID>(
        start(u"xterm"_s, arguments + QStringList{u"-e"_s, u"sleep"_s, u"1000"_s}).processId());
    return waitUntil([&] { return managed().size() > before; }) ? pid : 0;
}

xcb_window_t XDesktop::open(const WindowOptions& options) {
    const xcb_window_t window = xcb_generate_id(m_handle);
    xcb_create_window(m_handle, XCB_COPY_FROM_PARENT, window, m_root, 10, 10, 100, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    if (options.pid) {
        setNumber(window, "_NET_WM_PID", XCB_ATOM_CARDINAL,
                  static_cast<std::uint32_t>(*options.pid));
    }
    if (options.userTime) {
        xcb_window_t keeper = window;
        if (options.hasUserTimeWindow) {
            keeper = xcb_generate_id(m_handle);
            xcb_create_window(m_handle, 0, keeper, m_root, -1, -1, 1, 1, 0,
                              XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
            setNumber(window, "_NET_WM_USER_TIME_WINDOW", XCB_ATOM_WINDOW, keeper);
        }
        setNumber(keeper, "_NET_WM_USER_TIME", XCB_ATOM_CARDINAL, *options.userTime);
    }
    setText(window, XCB_ATOM_WM_CLIENT_MACHINE, options.machine);
    setText(window, XCB_ATOM_WM_NAME, options.title);
    if (!options.className.isEmpty()) {
        setText(window, XCB_ATOM_WM_CLASS, options.instanceName + '\0' + options.className + '\0');
    }
    xcb_map_window(m_handle, window);
    xcb_flush(m_handle);
    if (m_manager != nullptr) {
        std::ignore = waitUntil([&] {
            const auto windows = managed();
            return std::find(windows.begin(), windows.end(), window) != windows.end();
        });
    }
    return window;
}

void XDesktop::close(xcb_window_t window) {
    xcb_destroy_window(m_handle, window);
    xcb_flush(m_handle);
}

void XDesktop::hide(xcb_window_t window) {
    xcb_unmap_window(m_handle, window);
    xcb_flush(m_handle);
}

void XDesktop::iconify(xcb_window_t window) {
    constexpr std::uint32_t iconic = 3;
    sendToRoot(window, "WM_CHANGE_STATE", iconic, 0);
}

bool XDesktop::focus(xcb_window_t window) {
    constexpr std::uint32_t byThePager = 2;
    sendToRoot(window, "_NET_ACTIVE_WINDOW", byThePager, XCB_CURRENT_TIME);
    return waitUntil([&] {
        return hasFocus(window) &&
               numbers(m_root, "_NET_ACTIVE_WINDOW") == std::vector<std::uint32_t>{window};
    });
}

bool XDesktop::hasFocus(xcb_window_t window) {
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_handle, xcb_get_input_focus(m_handle), nullptr));
    return reply && reply->focus == window;
}

bool XDesktop::isAbove(xcb_window_t window, xcb_window_t other) {
    const XcbReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(m_handle, xcb_query_tree(m_handle, m_root), nullptr));
    const auto* const begin = xcb_query_tree_children(tree.get());
    const auto* const end = begin + tree->children_len;
    return std::find(begin, end, window) > std::find(begin, end, other);
}

bool XDesktop::isAboveManaged(xcb_window_t window, xcb_window_t other) {
    const auto stacking = numbers(m_root, "_NET_CLIENT_LIST_STACKING");
    return std::find(stacking.begin(), stacking.end(), window) >
           std::find(stacking.begin(), stacking.end(), other);
}

bool XDesktop::isShown(xcb_window_t window) {
    const XcbReply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        m_handle, xcb_get_window_attributes(m_handle, window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::vector<xcb_window_t> XDesktop::managed() {
    // A manager that has just started sleeps on what it has read meanwhile, until it is woken.
    setText(m_root, XCB_ATOM_CUT_BUFFER7, "wake up");
    return numbers(m_root, "_NET_CLIENT_LIST");
}

bool XDesktop::waitUntil(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(patience);
    for (;;) {
        while (XcbReply<xcb_generic_event_t>(xcb_poll_for_event(m_observer))) {
        }
        QCoreApplication::processEvents();
        if (condition()) {
            return true;
        }
        if (deadline.hasExpired()) {
            return false;
        }
        // Not everything shows at the root window, so look again after a while anyway.
        constexpr int glance = 50;
        pollfd socket{xcb_get_file_descriptor(m_observer), POLLIN, 0};
        poll(&socket, 1, glance);
    }
}

xcb_atom_t XDesktop::atom(const char* name) {
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        m_handle, xcb_intern_atom(m_handle, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

void XDesktop::setNumber(xcb_window_t window, const char* property, xcb_atom_t type,
                         std::uint32_t value) {
    xcb_change_property(m_handle, XCB_PROP_MODE_REPLACE, window, atom(property), type, 32, 1,
                        &value);
}

void XDesktop::setText(xcb_window_t window, xcb_atom_t property, const QByteArray& text) {
    if (!text.isEmpty()) {
        xcb_change_property(m_handle, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(text.size()), text.constData());
    }
}

std::vector<std::uint32_t> XDesktop::numbers(xcb_window_t window, const char* property) {
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        m_handle, xcb_get_property(m_handle, 0, window, atom(property), XCB_ATOM_ANY, 0, 1024),
        nullptr));
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto* const values =
        static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {values, values + reply->value_len};
}

void XDesktop::sendToRoot(xcb_window_t window, const char* type, std::uint32_t first,
                          std::uint32_t second) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(type);
    message.data.data32[0] = first;
    message.data.data32[1] = second;
    xcb_send_event(m_handle, 0, m_root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(m_handle);
}

} // namespace quorvin::testing
