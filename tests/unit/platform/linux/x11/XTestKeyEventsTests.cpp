#include "unit/platform/linux/x11/XKeyboardFixture.h"

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

using Direction = KeyEvent::Direction;
using Result = KeyEvents::Result;

constexpr ProcessID editor = 1'000'001; // above what the kernel gives to real processes here

const QString shiftInsert = u"Shift_L down\n"
                            "Insert down [Shift]\n"
                            "Insert up [Shift]\n"
                            "Shift_L up [Shift]"_s;
const QString controlShiftV = u"Control_L down\n"
                              "Shift_L down [Control]\n"
                              "v down [Shift+Control]\n"
                              "v up [Shift+Control]\n"
                              "Shift_L up [Shift+Control]\n"
                              "Control_L up [Control]"_s;

class XTestKeyEventsTest : public XKeyboardTest {};

} // namespace

TEST_F(XTestKeyEventsTest, PasteIsShiftInsertFromKeyDownToKeyUp) {
    KeyRecorder window(desktop, {.className = "XTerm"});
    EXPECT_EQ(post(paste(Direction::down)), Result::posted);
    std::ignore = connection.serverTime();
    EXPECT_EQ(window.take(), u"Shift_L down\nInsert down [Shift]"_s);
    EXPECT_EQ(post(paste(Direction::up)), Result::posted);
    std::ignore = connection.serverTime();
    EXPECT_EQ(window.take(), u"Insert up [Shift]\nShift_L up [Shift]"_s);
}

TEST_F(XTestKeyEventsTest, ReturnIsReturn) {
    KeyRecorder window(desktop, {});
    EXPECT_EQ(post(submit(Direction::down)), Result::posted);
    EXPECT_EQ(post(submit(Direction::up)), Result::posted);
    std::ignore = connection.serverTime();
    EXPECT_EQ(window.take(), u"Return down\nReturn up"_s);
}

TEST_F(XTestKeyEventsTest, ATerminalThatDoesNotKnowShiftInsertGetsItsOwnChord) {
    KeyRecorder window(desktop, {.className = "dev.warp.Warp"});
    EXPECT_EQ(pasteInto(window), controlShiftV);
}

TEST_F(XTestKeyEventsTest, KeysThatStandForNothingAreNotPosted) {
    KeyRecorder window(desktop, {});
    EXPECT_EQ(post({VirtualKey::v, Direction::down, KeyModifiers::none}), Result::notPossibleHere);
    EXPECT_EQ(post({VirtualKey::returnKey, Direction::down, KeyModifiers::command}),
              Result::notPossibleHere);
    EXPECT_EQ(post(submit(Direction::up)), Result::notPossibleHere) << "it isn't down";
    std::ignore = connection.serverTime();
    EXPECT_EQ(window.take(), u""_s);
}

// --- Layouts -------------------------------------------------------------------------------------

TEST_F(XTestKeyEventsTest, KeysThatWereMovedAreFoundWhereTheyAre) {
    constexpr xcb_keycode_t insertKey = 118;
    constexpr xcb_keycode_t returnKey = 36;
    constexpr xcb_keycode_t f11Key = 95;
    constexpr xcb_keycode_t f12Key = 96;
    KeyRecorder window(desktop, {});
    EXPECT_EQ(pasteInto(window), shiftInsert); // the layout before is not kept
    setSymbol(insertKey, XKB_KEY_F11);
    setSymbol(f11Key, XKB_KEY_Insert);
    setSymbol(returnKey, XKB_KEY_F12);
    setSymbol(f12Key, XKB_KEY_Return);
    EXPECT_EQ(pasteInto(window), shiftInsert);
    EXPECT_EQ(post(submit(Direction::down)), Result::posted);
    std::ignore = connection.serverTime();
    EXPECT_TRUE(isDown(f12Key));
    EXPECT_EQ(post(submit(Direction::up)), Result::posted);
    std::ignore = connection.serverTime();
    EXPECT_EQ(window.take(), u"Return down\nReturn up"_s);
}

TEST_F(XTestKeyEventsTest, ALayoutWithoutTheKeyMakesItImpossible) {
    constexpr xcb_keycode_t insertKey = 118;
    setSymbol(insertKey, XKB_KEY_F11);
    KeyRecorder window(desktop, {});
    EXPECT_EQ(post(paste(Direction::down)), Result::notPossibleHere);
    EXPECT_EQ(post(submit(Direction::down)), Result::posted);
}

TEST_F(XTestKeyEventsTest, LayoutsOfOtherLanguagesWork) {
    KeyRecorder window(desktop, {});
    for (const QString& layout : {u"de"_s, u"fr"_s, u"ru"_s, u"us,ru"_s}) {
        setLayout({u"-layout"_s, layout});
        EXPECT_EQ(pasteInto(window), shiftInsert) << layout.toStdString();
    }
}

TEST_F(XTestKeyEventsTest, ASymbolThatThePresentGroupLacksIsTakenFromAnother) {
    setLayout({u"-layout"_s, u"ru,us"_s});
    KeyRecorder window(desktop, {.className = "dev.warp.Warp"});
    // The recorder names keys by the first group, in which V's key is a Russian letter.
    EXPECT_EQ(pasteInto(window), QString(controlShiftV).replace(u"v "_s, u"Cyrillic_em "_s));
}

TEST_F(XTestKeyEventsTest, LocksChangeNothingAndStay) {
    KeyRecorder window(desktop, {});
    for (const xcb_keycode_t lock : {capsLockKey, numLockKey}) {
        userPresses(lock);
        userReleases(lock);
    }
    std::ignore = window.take();
    EXPECT_EQ(pasteInto(window), u"Shift_L down [Lock+NumLock]\n"
                                 "Insert down [Shift+Lock+NumLock]\n"
                                 "Insert up [Shift+Lock+NumLock]\n"
                                 "Shift_L up [Shift+Lock+NumLock]"_s);
}

// --- Windows that are about to be activated ------------------------------------------------------

TEST_F(XTestKeyEventsTest, AKeyDownWaitsForTheWindowThatWasAskedToTheFront) {
    KeyRecorder target(desktop, {});
    KeyRecorder other(desktop, {});
    std::ignore = target.take();
    std::ignore = other.take();
    connection.expectActivation(target.window());
    EXPECT_EQ(post(paste(Direction::down)), std::nullopt);
    scheduler.advance(200ms);
    EXPECT_EQ(other.take(), u""_s);
    target.takeFocus();
    scheduler.advance(5ms);
    EXPECT_EQ(post(paste(Direction::up)), Result::posted);
    std::ignore = connection.serverTime();
    EXPECT_EQ(target.take(), shiftInsert);
    EXPECT_EQ(other.take(), u""_s);
}

TEST_F(XTestKeyEventsTest, AWindowThatNeverComesIsWaitedForOnce) {
    KeyRecorder target(desktop, {});
    KeyRecorder other(desktop, {});
    std::ignore = other.take();
    connection.expectActivation(target.window());
    EXPECT_EQ(post(paste(Direction::down)), std::nullopt);
    scheduler.advance(399ms);
    EXPECT_EQ(other.take(), u""_s);
    scheduler.advance(1ms);
    EXPECT_EQ(post(paste(Direction::up)), Result::posted);
    EXPECT_EQ(post(submit(Direction::down)), Result::posted);
    EXPECT_EQ(post(submit(Direction::up)), Result::posted);
}

// --- Modifiers that the user holds ---------------------------------------------------------------

TEST_F(XTestKeyEventsTest, AKeyDownWaitsUntilTheUserHasLetGo) {
    KeyRecorder window(desktop, {});
    for (const xcb_keycode_t modifier : {controlKey, altKey, superKey, shiftKey}) {
        userPresses(modifier);
        std::ignore = window.take();
        EXPECT_EQ(post(paste(Direction::down)), std::nullopt);
        scheduler.advance(200ms);
        EXPECT_EQ(window.take(), u""_s) << int(modifier);
        userReleases(modifier);
        std::ignore = window.take();
        scheduler.advance(5ms);
        EXPECT_EQ(post(paste(Direction::up)), Result::posted);
        std::ignore = connection.serverTime();
        EXPECT_EQ(window.take(), shiftInsert) << int(modifier);
    }
}

TEST_F(XTestKeyEventsTest, AModifierThatIsNotReleasedIsLetGoForTheTimeOfTheKey) {
    KeyRecorder window(desktop, {});
    userPresses(controlKey);
    std::ignore = window.take();
    EXPECT_EQ(post(paste(Direction::down)), std::nullopt);
    scheduler.advance(399ms);
    EXPECT_EQ(window.take(), u""_s);
    scheduler.advance(1ms);
    EXPECT_EQ(post(paste(Direction::up)), Result::posted);
    std::ignore = connection.serverTime();
    EXPECT_EQ(window.take(), u"Control_L up [Control]\n"_s + shiftInsert + u"\nControl_L down"_s);
    EXPECT_TRUE(isDown(controlKey));
    userReleases(controlKey);
    EXPECT_FALSE(isDown(controlKey));
}

TEST_F(XTestKeyEventsTest, AModifierThatIsReleasedMeanwhileIsNotPressedAgain) {
    KeyRecorder window(desktop, {});
    userPresses(altKey);
    EXPECT_EQ(post(submit(Direction::down)), std::nullopt);
    scheduler.advance(400ms);
    userReleases(altKey);
    EXPECT_EQ(post(submit(Direction::up)), Result::posted);
    std::ignore = connection.serverTime();
    EXPECT_FALSE(isDown(altKey));
}

TEST_F(XTestKeyEventsTest, AModifierThatWasPressedAgainForTheUserDoesNotSpoilTheNextChord) {
    KeyRecorder window(desktop, {});
    userPresses(shiftKey);
    EXPECT_EQ(post(paste(Direction::down)), std::nullopt);
    scheduler.advance(400ms);
    EXPECT_EQ(post(paste(Direction::up)), Result::posted);
    std::ignore = connection.serverTime();
    EXPECT_TRUE(isDown(shiftKey));
    userReleases(shiftKey);
    std::ignore = window.take();
    EXPECT_EQ(pasteInto(window), shiftInsert);
}

TEST_F(XTestKeyEventsTest, AModifierThatAProgramHoldsIsLetGoForGood) {
    KeyRecorder window(desktop, {});
    xcb_test_fake_input(desktop.handle(), XCB_KEY_PRESS, controlKey, XCB_CURRENT_TIME,
                        XCB_WINDOW_NONE, 0, 0, 0);
    ASSERT_TRUE(isDown(controlKey));
    EXPECT_EQ(post(paste(Direction::down)), std::nullopt);
    scheduler.advance(400ms);
    EXPECT_EQ(post(paste(Direction::up)), Result::posted);
    std::ignore = connection.serverTime();
    EXPECT_FALSE(isDown(controlKey)) << "nobody could say when to release it again";
}

// --- Beginning and end ---------------------------------------------------------------------------

TEST_F(XTestKeyEventsTest, WhatIsPressedIsReleasedAtTheEnd) {
    KeyRecorder window(desktop, {});
    EXPECT_EQ(post(paste(Direction::down)), Result::posted);
    keys.reset();
    std::ignore = connection.serverTime();
    EXPECT_EQ(window.take(), shiftInsert);
}

TEST_F(XTestKeyEventsTest, AKeyDownThatWaitsAtTheEndIsNotPosted) {
    KeyRecorder window(desktop, {});
    userPresses(controlKey);
    std::optional<Result> result;
    const auto wait = [&]() -> Task<> { result = co_await keys->post(paste(Direction::down)); };
    const Task<> waiting = wait();
    std::ignore = window.take();
    keys.reset();
    scheduler.advance(5ms);
    EXPECT_EQ(result, Result::notPossibleHere);
    std::ignore = connection.serverTime();
    EXPECT_EQ(window.take(), u""_s);
}

TEST_F(XTestKeyEventsTest, IsTrustedWhileTheDisplayIsThere) {
    EXPECT_TRUE(keys->isTrusted());
    server.stop();
    EXPECT_TRUE(desktop.waitUntil([&] { return !keys->isTrusted(); }));
    EXPECT_EQ(post(paste(Direction::down)), Result::notPossibleHere);
}

TEST_F(XTestKeyEventsTest, IsNotTrustedWithoutADisplay) {
    XcbConnection nowhere("localhost:63000");
    XTestKeyEvents without(scheduler, nowhere);
    EXPECT_FALSE(without.isTrusted());
}

TEST(XTestKeyEventsTestWithoutTheExtension, IsNotTrusted) {
    const XServer server({u"-extension"_s, u"XTEST"_s});
    XcbConnection connection(server.display());
    ASSERT_TRUE(connection.isOpen());
    VirtualScheduler scheduler;
    XTestKeyEvents keys(scheduler, connection);
    EXPECT_FALSE(keys.isTrusted());
}

// --- To one process ------------------------------------------------------------------------------

TEST_F(XTestKeyEventsTest, AProcessGetsTheKeysWithoutHavingTheFocusBefore) {
    KeyRecorder target(desktop, {.pid = editor});
    KeyRecorder front(desktop, {});
    EXPECT_EQ(post(paste(Direction::down), editor), Result::posted);
    EXPECT_EQ(post(paste(Direction::up), editor), Result::posted);
    std::ignore = connection.serverTime();
    EXPECT_EQ(target.take(), shiftInsert);
    EXPECT_TRUE(desktop.hasFocus(front.window()));
}

TEST_F(XTestKeyEventsTest, AProcessWithoutAWindowOnTheScreenGetsNothing) {
    KeyRecorder hidden(desktop, {.pid = editor});
    KeyRecorder front(desktop, {});
    desktop.hide(hidden.window());
    EXPECT_EQ(post(paste(Direction::down), editor), Result::notPossibleHere);
    EXPECT_EQ(post(paste(Direction::down), editor + 1), Result::notPossibleHere);
    std::ignore = connection.serverTime();
    EXPECT_EQ(front.take(), u""_s);
    EXPECT_TRUE(desktop.hasFocus(front.window()));
}
