#include "platform/linux/x11/XcbConnection.h"
#include "unit/platform/linux/x11/XDesktop.h"

#include <QEventLoop>

#include <set>

#include <gtest/gtest.h>

using namespace quorvin;
using quorvin::testing::XDesktop;
using quorvin::testing::XServer;

namespace {

class XcbConnectionTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(connection.isOpen());
        QObject::connect(
            &connection, &XcbConnection::eventReceived, &connection,
            [this](const xcb_generic_event_t& event) {
                if ((event.response_type & 0x7f) == XCB_PROPERTY_NOTIFY) {
                    changed.insert(
                        reinterpret_cast<const xcb_property_notify_event_t&>(event).atom);
                }
                errors += event.response_type == 0 ? 1 : 0;
            });
    }

    void changeRoot(xcb_atom_t property) {
        const char value = 'x';
        xcb_change_property(desktop.handle(), XCB_PROP_MODE_REPLACE, desktop.root(), property,
                            XCB_ATOM_STRING, 8, 1, &value);
        // The reply to a later request says that this one is done.
        std::ignore = desktop.hasFocus(desktop.root());
    }

    XServer server;
    XDesktop desktop{server.display()};
    XcbConnection connection{server.display()};
    std::set<xcb_atom_t> changed; // properties of the root window
    int errors = 0;
};

} // namespace

TEST_F(XcbConnectionTest, KnowsTheAtomsOfTheWindowManagersProtocol) {
    EXPECT_EQ(connection.ewmh()->_NET_ACTIVE_WINDOW, desktop.atom("_NET_ACTIVE_WINDOW"));
    EXPECT_EQ(connection.ewmh()->_NET_WM_USER_TIME, desktop.atom("_NET_WM_USER_TIME"));
    EXPECT_EQ(connection.wmState(), desktop.atom("WM_STATE"));
    EXPECT_NE(connection.wmState(), XCB_ATOM_NONE);
    EXPECT_EQ(connection.root(), desktop.root());
}

TEST_F(XcbConnectionTest, EventsReachTheEventLoop) {
    changeRoot(XCB_ATOM_CUT_BUFFER0);
    EXPECT_TRUE(desktop.waitUntil([&] { return changed.contains(XCB_ATOM_CUT_BUFFER0); }));
}

TEST_F(XcbConnectionTest, AnEventThatCameWithAReplyIsNotLeftBehind) {
    changeRoot(XCB_ATOM_CUT_BUFFER0);
    // Takes the event off the socket, so that the socket will not announce it.
    const XcbReply<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
        connection.handle(), xcb_get_input_focus(connection.handle()), nullptr));
    ASSERT_TRUE(reply);
    EXPECT_FALSE(changed.contains(XCB_ATOM_CUT_BUFFER0));
    // Nothing else will wake the loop: only what it does before it goes to sleep helps.
    QEventLoop loop;
    QObject::connect(&connection, &XcbConnection::eventReceived, &loop, &QEventLoop::quit);
    loop.exec();
    EXPECT_TRUE(changed.contains(XCB_ATOM_CUT_BUFFER0));
}

TEST_F(XcbConnectionTest, TheServersTimeGoesOnAndTheEventsBeforeItAreKept) {
    const xcb_timestamp_t before = connection.serverTime();
    changeRoot(XCB_ATOM_CUT_BUFFER0);
    const xcb_timestamp_t after = connection.serverTime();
    EXPECT_NE(before, static_cast<xcb_timestamp_t>(XCB_CURRENT_TIME));
    EXPECT_GE(after, before);
    EXPECT_FALSE(changed.contains(XCB_ATOM_CUT_BUFFER0)) << "not in the middle of another call";
    connection.processEvents();
    EXPECT_TRUE(changed.contains(XCB_ATOM_CUT_BUFFER0));
}

TEST_F(XcbConnectionTest, ErrorsOfRequestsThatNobodyWaitsForAreDropped) {
    constexpr xcb_window_t noWindow = 0x1234567;
    xcb_map_window(connection.handle(), noWindow);
    const xcb_timestamp_t after = connection.serverTime(); // the error has come before it
    EXPECT_NE(after, static_cast<xcb_timestamp_t>(XCB_CURRENT_TIME));
    connection.processEvents();
    EXPECT_EQ(errors, 0);
    EXPECT_TRUE(connection.isOpen());
}

TEST_F(XcbConnectionTest, AServerThatGoesAwayEndsTheConnectionOnly) {
    server.stop();
    EXPECT_TRUE(desktop.waitUntil([&] { return !connection.isOpen(); }));
    EXPECT_EQ(connection.serverTime(), static_cast<xcb_timestamp_t>(XCB_CURRENT_TIME));
}
