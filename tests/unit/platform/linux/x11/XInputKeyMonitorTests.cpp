#include "platform/linux/x11/XInputKeyMonitor.h"
#include "unit/platform/linux/x11/XKeyboardFixture.h"

#include <vector>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

class XInputKeyMonitorTest : public XKeyboardTest {
protected:
    static constexpr xcb_keycode_t escapeKey = 9;
    static constexpr xcb_keycode_t backtickKey = 49;
    static constexpr xcb_keycode_t spaceKey = 65;
    static constexpr xcb_keycode_t rightKey = 114;
    static constexpr xcb_keycode_t letterKey = 38;

    void press(std::initializer_list<xcb_keycode_t> chord) {
        for (const xcb_keycode_t key : chord) {
            userPresses(key);
        }
        for (auto key = std::rbegin(chord); key != std::rend(chord); ++key) {
            userReleases(*key);
        }
    }
    /// What was seen of these keys; Escape, without a modifier, ends each look.
    std::vector<KeyDown> seenOf(std::initializer_list<xcb_keycode_t> chord) {
        seen.clear();
        press(chord);
        press({escapeKey});
        EXPECT_TRUE(desktop.waitUntil(
            [this] { return !seen.empty() && seen.back().keyCode == KeyCode::escape; }));
        seen.pop_back();
        return seen;
    }

    XInputKeyMonitor monitor{connection};
    std::vector<KeyDown> seen;
    KeyMonitor::Subscription subscription =
        monitor.addGlobalMonitor([this](const KeyDown& key) { seen.push_back(key); });
};

} // namespace

TEST_F(XInputKeyMonitorTest, SeesTheKeysOfOtherProgramsWithTheirModifiers) {
    EXPECT_EQ(seenOf({controlKey, backtickKey}),
              (std::vector<KeyDown>{{KeyCode::backtick, ModifierFlag::control}}));
    EXPECT_EQ(seenOf({altKey, spaceKey}),
              (std::vector<KeyDown>{{KeyCode::space, ModifierFlag::option}}));
    EXPECT_EQ(seenOf({superKey, rightKey}),
              (std::vector<KeyDown>{{KeyCode::rightArrow, ModifierFlag::command}}));
    EXPECT_EQ(
        seenOf({controlKey, shiftKey, backtickKey}),
        (std::vector<KeyDown>{{KeyCode::backtick, ModifierFlag::control | ModifierFlag::shift}}));
}

TEST_F(XInputKeyMonitorTest, TakesNothingAwayFromThem) {
    KeyRecorder window(desktop, {});
    press({backtickKey});
    std::ignore = connection.serverTime();
    EXPECT_EQ(window.take(), u"grave down\ngrave up"_s);
}

TEST_F(XInputKeyMonitorTest, SeesThemAlsoUnderAnotherClientsGrab) {
    xcb_connection_t* const other = desktop.handle();
    const XcbReply<xcb_grab_keyboard_reply_t> grab(
        xcb_grab_keyboard_reply(other,
                                xcb_grab_keyboard(other, 1, desktop.root(), XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    ASSERT_TRUE(grab && grab->status == XCB_GRAB_STATUS_SUCCESS);
    EXPECT_EQ(seenOf({controlKey, backtickKey}),
              (std::vector<KeyDown>{{KeyCode::backtick, ModifierFlag::control}}));
}

TEST_F(XInputKeyMonitorTest, LocksAreNoModifiers) {
    for (const xcb_keycode_t lock : {capsLockKey, numLockKey}) {
        press({lock});
        EXPECT_EQ(seenOf({controlKey, backtickKey}),
                  (std::vector<KeyDown>{{KeyCode::backtick, ModifierFlag::control}}));
        press({lock});
    }
}

TEST_F(XInputKeyMonitorTest, KeysArePositionsWhateverTheLayout) {
    for (const QString& layout : {u"de"_s, u"ru"_s, u"fr"_s}) {
        setLayout({layout});
        EXPECT_EQ(seenOf({controlKey, backtickKey}),
                  (std::vector<KeyDown>{{KeyCode::backtick, ModifierFlag::control}}))
            << layout.toStdString();
    }
}

TEST_F(XInputKeyMonitorTest, OtherKeysAreNotTold) {
    EXPECT_EQ(seenOf({letterKey}), std::vector<KeyDown>());
    EXPECT_EQ(seenOf({controlKey, letterKey}), std::vector<KeyDown>());
}

TEST_F(XInputKeyMonitorTest, AnEndedSubscriptionSeesNothingMore) {
    std::vector<KeyDown> seenByOther;
    auto other = monitor.addGlobalMonitor([&](const KeyDown& key) { seenByOther.push_back(key); });
    std::ignore = seenOf({backtickKey});
    EXPECT_EQ(seenByOther.size(), 2U);
    other.reset();
    std::ignore = seenOf({backtickKey});
    EXPECT_EQ(seenByOther.size(), 2U);
}
