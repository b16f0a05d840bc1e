#include "platform/linux/x11/XTestKeyboard.h"

#include "platform/linux/x11/XkbKeymap.h"

#include <algorithm>
#include <array>
#include <utility>

#include <xcb/xtest.h>

namespace quorvin {

namespace {

/// Absent for keys that stand for nothing here.
std::optional<KeyChord> chordFor(const KeyEvent& event, const QString& windowClass) {
    if (event.key == VirtualKey::v && event.modifiers == KeyModifiers::command) {
        return pasteChord(windowClass);
    }
    if (event.key == VirtualKey::returnKey && event.modifiers == KeyModifiers::none) {
        return KeyChord{{}, 0, XKB_KEY_Return};
    }
    return std::nullopt;
}

} // namespace

XTestKeyboard::XTestKeyboard(XcbConnection& connection)
    : m_connection(connection), m_windows(connection), m_heldKeys(connection) {}

void XTestKeyboard::close() {
    while (!m_presses.empty()) {
        release(m_presses.begin()->first);
    }
    m_isClosed = true;
}

bool XTestKeyboard::isActivationUnderWay() {
    const xcb_window_t expected = m_connection.expectedActivation();
    if (expected != XCB_WINDOW_NONE && m_windows.active() == expected) {
        stopExpectingActivation();
    }
    return m_connection.expectedActivation() != XCB_WINDOW_NONE;
}

bool XTestKeyboard::isUsable() const {
    if (m_isClosed || !m_connection.isOpen()) {
        return false;
    }
    const auto* const extension =
        xcb_get_extension_data(m_connection.handle(), &xcb_test_id); // asks the server once
    return extension != nullptr && extension->present != 0;
}

KeyEvents::Result XTestKeyboard::press(const KeyEvent& event, std::optional<ProcessID> process) {
    constexpr auto notPossible = KeyEvents::Result::notPossibleHere;
    const std::optional<X11Window> window = target(process);
    if (process && !window) {
        return notPossible;
    }
    const auto chord = chordFor(event, window ? window->className : QString());
    auto keys = chord ? keysOf(*chord) : std::nullopt;
    if (!keys) {
        return notPossible;
    }
    release(event.key); // a second key-down
    Press press{*std::move(keys), m_heldKeys.modifiers(), std::nullopt};
    if (process) {
        press.focusBefore = moveFocusTo(window->window);
        if (!press.focusBefore) {
            return notPossible;
        }
    }
    for (const xcb_keycode_t key : press.suspended) {
        fake(XCB_KEY_RELEASE, key);
    }
    for (const xcb_keycode_t key : press.keys) {
        // The extension's own keyboard may still believe in a key that was pressed again for the
        // user, who has let it go since; it would swallow the press.
        fake(XCB_KEY_RELEASE, key);
        fake(XCB_KEY_PRESS, key);
    }
    xcb_flush(m_connection.handle());
    m_presses.emplace(event.key, std::move(press));
    return KeyEvents::Result::posted;
}

KeyEvents::Result XTestKeyboard::release(VirtualKey key) {
    const auto node = m_presses.extract(key);
    if (node.empty()) {
        return KeyEvents::Result::notPossibleHere;
    }
    const Press& press = node.mapped();
    for (auto it = press.keys.rbegin(); it != press.keys.rend(); ++it) {
        fake(XCB_KEY_RELEASE, *it);
    }
    pressAgain(press.suspended);
    if (press.focusBefore) {
        xcb_set_input_focus(m_connection.handle(), press.focusBefore->revertTo,
                            press.focusBefore->window, m_connection.serverTime());
    }
    xcb_flush(m_connection.handle());
    return KeyEvents::Result::posted;
}

std::optional<X11Window> XTestKeyboard::target(std::optional<ProcessID> process) {
    if (!process) {
        const std::array active{m_windows.active()};
        return m_windows.describe(active)[0];
    }
    const std::vector<X11Window> windows = m_windows.describe(m_windows.stacking());
    const auto highest = std::find_if(windows.rbegin(), windows.rend(), [&](const auto& window) {
        return window.processIdentifier == process;
    });
    return highest == windows.rend() ? std::nullopt : std::optional(*highest);
}

std::optional<std::vector<xcb_keycode_t>> XTestKeyboard::keysOf(const KeyChord& chord) {
    const auto keymap = XkbKeymap::read(m_connection);
    if (!keymap) {
        return std::nullopt;
    }
    std::vector<xcb_keycode_t> keys;
    for (const xkb_keysym_t symbol : chord.modifiers()) {
        const auto key = keymap->keycode(symbol, {});
        if (!key) {
            return std::nullopt;
        }
        keys.push_back(*key);
    }
    const auto key = keymap->keycode(chord.key, keys);
    if (!key) {
        return std::nullopt;
    }
    keys.push_back(*key);
    return keys;
}

std::optional<XTestKeyboard::Focus> XTestKeyboard::moveFocusTo(xcb_window_t window) {
    xcb_connection_t* const handle = m_connection.handle();
    const XcbReply<xcb_get_input_focus_reply_t> before(
        xcb_get_input_focus_reply(handle, xcb_get_input_focus_unchecked(handle), nullptr));
    const XcbReply<xcb_generic_error_t> refusal(
        xcb_request_check(handle, xcb_set_input_focus_checked(handle, XCB_INPUT_FOCUS_PARENT,
                                                              window, m_connection.serverTime())));
    return before && !refusal ? std::optional(Focus{before->focus, before->revert_to})
                              : std::nullopt;
}

void XTestKeyboard::pressAgain(const std::vector<xcb_keycode_t>& keys) {
    if (keys.empty()) {
        return;
    }
    const HeldKeys::Set physical = m_heldKeys.physical();
    for (const xcb_keycode_t key : keys) {
        if (physical[key]) {
            fake(XCB_KEY_PRESS, key);
        }
    }
}

void XTestKeyboard::fake(std::uint8_t type, xcb_keycode_t key) {
    xcb_test_fake_input(m_connection.handle(), type, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0,
                        0);
}

} // namespace quorvin
