#include "unit/platform/linux/terminals/StandInKonsole.h"

#include <gmock/gmock.h>
#include <unistd.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class KonsoleTabsTest : public AutomationTest {
protected:
    KonsoleTabsTest() {
        bus = privateBus.connect();
        // Opened as the windows 2 and 10, which the window system lists in this order.
        konsole.addWindow(10, {3});
        konsole.addWindow(2, {1, 2});
        konsole.addSession(1, 100);
        konsole.addSession(2, 101);
        konsole.addSession(3, 102);
        addProgram(terminal); // the bus knows the stand-in by the test's own process
        addShell(100, terminal, 1, {{"WINDOWID", "5001"}});
        addShell(101, terminal, 2, {{"WINDOWID", "5001"}});
        addShell(102, terminal, 3, {{"WINDOWID", "5001"}}); // moved here since
        windows.present = {{5001, terminal}, {7777, 70}, {5002, terminal}};
    }

    const ProcessID terminal = getpid();
    PrivateBus privateBus;
    StandInKonsole konsole{privateBus.connect()};
};

} // namespace

TEST_F(KonsoleTabsTest, TheSessionOnTheDeviceBecomesTheCurrentOneOfItsWindow) {
    konsole.own(u"org.kde.konsole-4711"_s);
    const TabFocus answer = focus(u"/dev/pts/2"_s);
    EXPECT_EQ(answer.result, TabFocus::Result::found);
    EXPECT_EQ(answer.terminal, terminal);
    EXPECT_THAT(konsole.selected(), ElementsAre(u"window 2 session 2"_s));
    EXPECT_THAT(windows.raised, ElementsAre(5001));
}

TEST_F(KonsoleTabsTest, ATabThatWasMovedToAnotherWindowIsFoundThere) {
    konsole.own(u"org.kde.konsole"_s);
    EXPECT_EQ(focus(u"/dev/pts/3"_s).result, TabFocus::Result::found);
    EXPECT_THAT(konsole.selected(), ElementsAre(u"window 10 session 3"_s));
    EXPECT_THAT(windows.raised, ElementsAre(5002)) << "and not the one of the environment";
}

TEST_F(KonsoleTabsTest, WhenWindowsAreCountedDifferentlyTheToldOneIsRaised) {
    konsole.own(u"org.kde.konsole"_s);
    windows.present.push_back({5003, terminal}); // a dialog
    EXPECT_EQ(focus(u"/dev/pts/3"_s).result, TabFocus::Result::found);
    EXPECT_THAT(windows.raised, ElementsAre(5001));
}

TEST_F(KonsoleTabsTest, AnUnnamedKonsoleIsFoundThroughTheEnvironment) {
    addShell(103, terminal, 4, {{"KONSOLE_DBUS_SERVICE", konsole.uniqueName()}});
    konsole.addWindow(11, {4});
    konsole.addSession(4, 103);
    EXPECT_EQ(focus(u"/dev/pts/4"_s).result, TabFocus::Result::found);
    EXPECT_THAT(konsole.selected(), ElementsAre(u"window 11 session 4"_s));
}

TEST_F(KonsoleTabsTest, AnotherTerminalThatWasStartedInKonsoleIsTakenForItself) {
    konsole.own(u"org.kde.konsole"_s);
    addProgram(70);
    addShell(104, 70, 5, {{"KONSOLE_DBUS_SERVICE", konsole.uniqueName()}, {"WINDOWID", "7777"}});
    EXPECT_EQ(focus(u"/dev/pts/5"_s).result, TabFocus::Result::notScriptable);
    EXPECT_THAT(konsole.selected(), IsEmpty());
    EXPECT_THAT(windows.raised, ElementsAre(7777));
}

TEST_F(KonsoleTabsTest, ASessionThatKonsoleDoesNotKnowIsNotFoundButItsWindowIsRaised) {
    konsole.own(u"org.kde.konsole"_s);
    addShell(105, terminal, 6, {{"WINDOWID", "5002"}});
    EXPECT_EQ(focus(u"/dev/pts/6"_s).result, TabFocus::Result::notFound);
    EXPECT_THAT(windows.raised, ElementsAre(5002));
}

TEST_F(KonsoleTabsTest, ABusThatDoesNotAnswerCostsASecondAQuestion) {
    konsole.own(u"org.kde.konsole"_s);
    addShell(103, terminal, 4, {{"WINDOWID", "5002"}});
    const FrozenBus frozen(bus);
    const auto answer = beginFocus(u"/dev/pts/4"_s);
    scheduler.advance(3s); // the names, the name in the environment, and nothing more
    EXPECT_TRUE(answer->has_value());
    EXPECT_EQ((*answer)->result, TabFocus::Result::notScriptable);
    EXPECT_THAT(windows.raised, ElementsAre(5002));
}

TEST_F(KonsoleTabsTest, TheAutomationMayGoWhileKonsoleIsAsked) {
    const FrozenBus frozen(bus);
    const auto answer = beginFocus(u"/dev/pts/2"_s);
    endAutomation();
    ASSERT_TRUE(answer->has_value());
    EXPECT_EQ((*answer)->result, TabFocus::Result::notFound);
    EXPECT_THAT(windows.raised, IsEmpty());
}
