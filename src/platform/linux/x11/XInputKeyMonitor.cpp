#include "platform/linux/x11/XInputKeyMonitor.h"

#include "platform/linux/x11/XcbReply.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLoggingCategory>
#include <QWindow>

#include <algorithm>
#include <optional>

#include <xcb/xinput.h>

namespace quorvin {

namespace {

Q_LOGGING_CATEGORY(keyMonitorLog, "com.quorvin.KeyMonitor", QtInfoMsg)

/// By the evdev number of the key's position plus 8, as X servers count.
std::optional<std::uint16_t> keyCodeAt(std::uint32_t keycode) {
    switch (keycode) {
    case 9:
        return KeyCode::escape;
    case 49:
        return KeyCode::backtick;
    case 65:
        return KeyCode::space;
    case 114:
        return KeyCode::rightArrow;
    default:
        return std::nullopt;
    }
}

/// The flag of a row of the X server's modifier map: Shift, Lock, Control, Mod1 to Mod5. By
/// convention Alt is Mod1 and Super is Mod4; the locks have none.
std::uint32_t flagOfRow(int row) {
    switch (row) {
    case XCB_MAP_INDEX_SHIFT:
        return ModifierFlag::shift;
    case XCB_MAP_INDEX_CONTROL:
        return ModifierFlag::control;
    case XCB_MAP_INDEX_1:
        return ModifierFlag::option;
    case XCB_MAP_INDEX_4:
        return ModifierFlag::command;
    default:
        return 0;
    }
}

std::uint32_t flagsOf(Qt::KeyboardModifiers modifiers) {
    std::uint32_t flags = 0;
    flags |= modifiers.testFlag(Qt::ShiftModifier) ? ModifierFlag::shift : 0;
    flags |= modifiers.testFlag(Qt::ControlModifier) ? ModifierFlag::control : 0;
    flags |= modifiers.testFlag(Qt::AltModifier) ? ModifierFlag::option : 0;
    flags |= modifiers.testFlag(Qt::MetaModifier) ? ModifierFlag::command : 0;
    return flags;
}

template <typename Handler>
std::vector<std::shared_ptr<Handler>> living(std::list<std::weak_ptr<Handler>>& handlers) {
    handlers.remove_if([](const auto& handler) { return handler.expired(); });
    std::vector<std::shared_ptr<Handler>> result;
    for (const auto& handler : handlers) {
        result.push_back(handler.lock());
    }
    return result;
}

} // namespace

XInputKeyMonitor::XInputKeyMonitor(XcbConnection& connection) : m_connection(connection) {
    if (m_connection.isOpen() && selectRawEvents()) {
        readModifierMapping();
        connect(&m_connection, &XcbConnection::eventReceived, this, &XInputKeyMonitor::received);
    } else {
        qCWarning(keyMonitorLog, "No XInput 2: hot keys work in this program's windows only");
    }
    QCoreApplication::instance()->installEventFilter(this);
}

KeyMonitor::Subscription
XInputKeyMonitor::addGlobalMonitor(std::function<void(const KeyDown&)> handler) {
    auto subscription = std::make_shared<GlobalHandler>(std::move(handler));
    m_globalHandlers.push_back(subscription);
    return subscription;
}

KeyMonitor::Subscription
XInputKeyMonitor::addLocalMonitor(std::function<bool(const KeyDown&)> handler) {
    auto subscription = std::make_shared<LocalHandler>(std::move(handler));
    m_localHandlers.push_back(subscription);
    return subscription;
}

bool XInputKeyMonitor::selectRawEvents() {
    xcb_connection_t* const handle = m_connection.handle();
    const auto* const extension = xcb_get_extension_data(handle, &xcb_input_id);
    if (!extension || !extension->present) {
        return false;
    }
    m_inputOpcode = extension->major_opcode;
    // From 2.1 on raw events also come while another program has a grab.
    const XcbReply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        handle, xcb_input_xi_query_version(handle, 2, 2), nullptr));
    if (!version || version->major_version < 2) {
        return false;
    }
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } const selection{
        .head = {.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1},
        .mask = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE,
    };
    xcb_input_xi_select_events(handle, m_connection.root(), 1, &selection.head);
    xcb_flush(handle);
    return true;
}

void XInputKeyMonitor::readModifierMapping() {
    xcb_connection_t* const handle = m_connection.handle();
    const XcbReply<xcb_get_modifier_mapping_reply_t> mapping(
        xcb_get_modifier_mapping_reply(handle, xcb_get_modifier_mapping(handle), nullptr));
    if (!mapping) {
        return;
    }
    m_flagsOfKey.fill(0);
    const xcb_keycode_t* const keycodes = xcb_get_modifier_mapping_keycodes(mapping.get());
    const int width = mapping->keycodes_per_modifier;
    for (int i = 0; i < xcb_get_modifier_mapping_keycodes_length(mapping.get()); ++i) {
        m_flagsOfKey.at(keycodes[i]) |= flagOfRow(i / width);
    }
    m_flagsOfKey[0] = 0; // fills the rows up
}

void XInputKeyMonitor::received(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
    case XCB_MAPPING_NOTIFY:
        readModifierMapping();
        break;
    case XCB_GE_GENERIC: {
        const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
        if (generic.extension != m_inputOpcode) {
            return;
        }
        if (generic.event_type == XCB_INPUT_RAW_KEY_PRESS ||
            generic.event_type == XCB_INPUT_RAW_KEY_RELEASE) {
            const auto& key = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
            keyMoved(key.detail, key.time, generic.event_type == XCB_INPUT_RAW_KEY_PRESS);
        }
        break;
    }
    default:
        break;
    }
}

void XInputKeyMonitor::keyMoved(std::uint32_t keycode, xcb_timestamp_t time, bool isDown) {
    if (keycode >= m_held.size()) {
        return;
    }
    m_held[keycode] = isDown;
    const auto keyCode = keyCodeAt(keycode);
    if (!isDown || !keyCode) {
        return;
    }
    // What goes to this program is the local monitors' affair. The window may have lost the focus
    // by that very key, and its event is then known already.
    if (m_lastOwn == Press{time, keycode} || ownsFocus()) {
        return;
    }
    std::uint32_t flags = 0;
    for (std::size_t key = 0; key < m_held.size(); ++key) {
        flags |= m_held[key] ? m_flagsOfKey.at(key) : 0;
    }
    for (const auto& handler : living(m_globalHandlers)) {
        (*handler)({.keyCode = *keyCode, .modifierFlags = flags});
    }
}

bool XInputKeyMonitor::ownsFocus() {
    // Asked of the X server: for some tenths of a second Qt takes a focus that left for one that
    // will be back.
    xcb_connection_t* const handle = m_connection.handle();
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(handle, xcb_get_input_focus(handle), nullptr));
    const auto windows = QGuiApplication::allWindows();
    return reply && std::any_of(windows.begin(), windows.end(), [&](const QWindow* window) {
               return window->handle() && window->winId() == reply->focus;
           });
}

bool XInputKeyMonitor::eventFilter(QObject* watched, QEvent* event) {
    // Keys come to windows first and then to what is in them.
    if (event->type() == QEvent::KeyPress && watched->isWindowType() &&
        isConsumed(static_cast<const QKeyEvent&>(*event))) {
        return true;
    }
    return QObject::eventFilter(watched, event);
}

bool XInputKeyMonitor::isConsumed(const QKeyEvent& event) {
    m_lastOwn = {static_cast<xcb_timestamp_t>(event.timestamp()), event.nativeScanCode()};
    const auto keyCode = keyCodeAt(event.nativeScanCode());
    if (event.isAutoRepeat() || !keyCode) {
        return false;
    }
    bool consumed = false;
    for (const auto& handler : living(m_localHandlers)) {
        consumed = (*handler)({.keyCode = *keyCode, .modifierFlags = flagsOf(event.modifiers())}) ||
                   consumed;
    }
    return consumed;
}

} // namespace quorvin
