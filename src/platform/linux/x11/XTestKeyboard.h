#pragma once

#include "platform/KeyEvents.h"
#include "platform/linux/x11/HeldKeys.h"
#include "platform/linux/x11/PasteChords.h"
#include "platform/linux/x11/X11Windows.h"

#include <map>
#include <optional>
#include <vector>

namespace quorvin {

/// Presses and releases what stands for the posted keys, through the XTEST extension. Each key-down
/// is to be followed by its key-up.
class XTestKeyboard {
public:
    explicit XTestKeyboard(XcbConnection& connection);
    ~XTestKeyboard() { close(); }
    XTestKeyboard(const XTestKeyboard&) = delete;
    XTestKeyboard& operator=(const XTestKeyboard&) = delete;

    /// Releases what is pressed; nothing is possible afterwards.
    void close();

    /// Whether the display can be reached and has the extension.
    [[nodiscard]] bool isUsable() const;

    [[nodiscard]] bool isUserHoldingModifier() { return !m_heldKeys.modifiers().empty(); }

    /// Whether this program has asked for a window to be activated that isn't active yet.
    [[nodiscard]] bool isActivationUnderWay();
    /// The window may have gone, or its user has chosen another.
    void stopExpectingActivation() { m_connection.expectActivation(XCB_WINDOW_NONE); }

    /// Presses the keys for the application that has the keyboard focus, or else gives `process`
    /// the focus until the key-up. Modifiers that the user holds are let go for that time. Not
    /// possible for a key that the layout lacks or that stands for nothing here, and for a process
    /// without a window on the screen.
    KeyEvents::Result press(const KeyEvent& event, std::optional<ProcessID> process);
    /// Not possible for a key that isn't pressed.
    KeyEvents::Result release(VirtualKey key);

private:
    struct Focus {
        xcb_window_t window;
        std::uint8_t revertTo;
    };
    struct Press {
        std::vector<xcb_keycode_t> keys;
        std::vector<xcb_keycode_t> suspended; // the user's modifiers, let go meanwhile
        std::optional<Focus> focusBefore;
    };

    [[nodiscard]] std::optional<X11Window> target(std::optional<ProcessID> process);
    /// The keys to hold, in their order; absent when the layout lacks one.
    [[nodiscard]] std::optional<std::vector<xcb_keycode_t>> keysOf(const KeyChord& chord);
    /// Gives the window the keyboard focus and returns who had it; absent when it can't have it.
    [[nodiscard]] std::optional<Focus> moveFocusTo(xcb_window_t window);
    void pressAgain(const std::vector<xcb_keycode_t>& keys);
    void fake(std::uint8_t type, xcb_keycode_t key);

    XcbConnection& m_connection;
    X11Windows m_windows;
    HeldKeys m_heldKeys;
    std::map<VirtualKey, Press> m_presses;
    bool m_isClosed = false;
};

} // namespace quorvin
