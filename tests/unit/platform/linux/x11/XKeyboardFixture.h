#pragma once

#include "platform/linux/x11/XTestKeyEvents.h"
#include "support/VirtualScheduler.h"
#include "unit/platform/linux/x11/XDesktop.h"

#include <QStringList>

#include <memory>
#include <optional>

#include <gtest/gtest.h>

namespace quorvin::testing {

/// A window that writes down the keys that it gets, by the names of their symbols: "Shift_L down",
/// "Insert down [Shift]", "Insert up [Shift]".
class KeyRecorder {
public:
    /// Shows the window and gives it the keyboard focus.
    KeyRecorder(XDesktop& desktop, const XDesktop::WindowOptions& options);

    [[nodiscard]] xcb_window_t window() const { return m_window; }
    void takeFocus();
    /// What has come since the last call, one line each.
    [[nodiscard]] QString take();

private:
    [[nodiscard]] QString describe(const xcb_key_press_event_t& event, const char* direction);

    XDesktop& m_desktop;
    xcb_window_t m_window;
};

/// Keys on a private X server. The clock is virtual; what the user does with the keyboard is done
/// to the server's own keyboard device, as a real one would.
class XKeyboardTest : public ::testing::Test {
protected:
    static constexpr xcb_keycode_t controlKey = 37; // of the server's usual layout, as those below
    static constexpr xcb_keycode_t shiftKey = 50;
    static constexpr xcb_keycode_t altKey = 64;
    static constexpr xcb_keycode_t capsLockKey = 66;
    static constexpr xcb_keycode_t numLockKey = 77;
    static constexpr xcb_keycode_t superKey = 133;

    void SetUp() override;

    static KeyEvent paste(KeyEvent::Direction direction) {
        return {VirtualKey::v, direction, KeyModifiers::command};
    }
    static KeyEvent submit(KeyEvent::Direction direction) {
        return {VirtualKey::returnKey, direction, KeyModifiers::none};
    }

    /// Posts and returns the answer, or nothing while it waits for the clock.
    std::optional<KeyEvents::Result> post(KeyEvent event);
    std::optional<KeyEvents::Result> post(KeyEvent event, ProcessID process);
    /// Presses paste and lets it go, and returns what `recorder` got.
    QString pasteInto(KeyRecorder& recorder);

    /// Presses or releases a key of the server's keyboard device.
    void userPresses(xcb_keycode_t key) { moveUserKey(key, 1); }
    void userReleases(xcb_keycode_t key) { moveUserKey(key, 2); }
    [[nodiscard]] bool isDown(xcb_keycode_t key);

    /// Lays symbols on a key, as xmodmap does.
    void setSymbol(xcb_keycode_t key, xcb_keysym_t symbol);
    void setLayout(const QStringList& arguments);

    XServer server;
    XDesktop desktop{server.display()};
    XcbConnection connection{server.display()};
    VirtualScheduler scheduler;
    std::unique_ptr<XTestKeyEvents> keys = std::make_unique<XTestKeyEvents>(scheduler, connection);

private:
    void moveUserKey(xcb_keycode_t key, std::uint8_t eventOfDevice);

    std::uint8_t m_keyboardDevice = 0;
};

} // namespace quorvin::testing
