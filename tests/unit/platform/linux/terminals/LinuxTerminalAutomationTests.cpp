#include "unit/platform/linux/terminals/AutomationFixture.h"

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class LinuxTerminalAutomationTest : public AutomationTest {};

} // namespace

TEST_F(LinuxTerminalAutomationTest, TheWindowThatTheTerminalToldItsShellIsRaised) {
    addProgram(60);
    addShell(100, 60, 1, {{"WINDOWID", "5001"}});
    addShell(101, 60, 2, {{"WINDOWID", "5002"}});
    windows.present = {{5001, 60}, {5002, 60}};
    const TabFocus answer = focus(u"/dev/pts/2"_s);
    EXPECT_THAT(windows.raised, ElementsAre(5002));
    EXPECT_EQ(answer.terminal, 60);
    EXPECT_EQ(answer.result, TabFocus::Result::notScriptable);
    EXPECT_THAT(workspace.activated, IsEmpty());
}

TEST_F(LinuxTerminalAutomationTest, OfSeveralProcessesOfOneTerminalTheShellsOwnIsMeant) {
    addProgram(60);
    addProgram(61);
    addShell(100, 61, 1, {});
    windows.present = {{5001, 60}, {5002, 61}};
    EXPECT_EQ(focus(u"/dev/pts/1"_s).terminal, 61);
    EXPECT_THAT(workspace.activated, ElementsAre(61));
}

TEST_F(LinuxTerminalAutomationTest, ATerminalThatTellsNoWindowIsActivatedByItsProcess) {
    addProgram(60);
    addShell(100, 60, 1, {});
    windows.present = {{5001, 60}, {5002, 60}};
    const TabFocus answer = focus(u"/dev/pts/1"_s);
    EXPECT_THAT(windows.raised, IsEmpty());
    EXPECT_THAT(workspace.activated, ElementsAre(60));
    EXPECT_EQ(answer.terminal, 60);
}

TEST_F(LinuxTerminalAutomationTest, AnInheritedWindowNumberIsNotBelieved) {
    addProgram(60); // has started the shell that has started the other terminal
    addShell(100, 60, 1, {{"WINDOWID", "5001"}});
    addProgram(70, 1);
    addShell(101, 70, 2, {{"WINDOWID", "5001"}});
    windows.present = {{5001, 60}, {5002, 70}};
    EXPECT_EQ(focus(u"/dev/pts/2"_s).terminal, 70);
    EXPECT_THAT(windows.raised, IsEmpty());
    EXPECT_THAT(workspace.activated, ElementsAre(70));
}

TEST_F(LinuxTerminalAutomationTest, AWindowThatHasClosedIsNotRaised) {
    addProgram(60);
    addShell(100, 60, 1, {{"WINDOWID", "5001"}});
    windows.present = {{5002, 60}};
    EXPECT_EQ(focus(u"/dev/pts/1"_s).terminal, 60);
    EXPECT_THAT(windows.raised, IsEmpty());
    EXPECT_THAT(workspace.activated, ElementsAre(60));
}

TEST_F(LinuxTerminalAutomationTest, TheFirstProcessOnTheDeviceTellsWhatTheTerminalGaveIt) {
    addProgram(60);
    addShell(100, 60, 1, {{"WINDOWID", "5001"}});
    addShell(90, 100, 1, {{"WINDOWID", "7777"}}); // with a lower number, and later
    windows.present = {{5001, 60}, {7777, 60}};
    std::ignore = focus(u"/dev/pts/1"_s);
    EXPECT_THAT(windows.raised, ElementsAre(5001));
}

TEST_F(LinuxTerminalAutomationTest, AStaleTtyIsNotFound) {
    addProgram(60);
    addShell(100, 60, 1, {{"WINDOWID", "5001"}});
    windows.present = {{5001, 60}};
    const TabFocus answer = focus(u"/dev/pts/9"_s);
    EXPECT_EQ(answer.result, TabFocus::Result::notFound);
    EXPECT_EQ(answer.terminal, std::nullopt);
    EXPECT_THAT(windows.raised, IsEmpty());
    EXPECT_THAT(workspace.activated, IsEmpty());
}

TEST_F(LinuxTerminalAutomationTest, WithoutAnyProcessesNothingIsFound) {
    EXPECT_EQ(focus(u"/dev/pts/1"_s).result, TabFocus::Result::notFound);
}

TEST_F(LinuxTerminalAutomationTest, AShellWithoutATerminalOnTheDesktopRaisesNothing) {
    addProgram(60); // a server for logins from elsewhere
    addShell(100, 60, 1, {{"WINDOWID", "5001"}});
    const TabFocus answer = focus(u"/dev/pts/1"_s);
    EXPECT_EQ(answer.terminal, std::nullopt);
    EXPECT_THAT(workspace.activated, IsEmpty());
}

TEST_F(LinuxTerminalAutomationTest, ProcessesThatAreEachOthersParentsEndTheSearch) {
    addShell(100, 60, 1, {});
    addProgram(60, 61);
    addProgram(61, 60);
    EXPECT_EQ(focus(u"/dev/pts/1"_s).terminal, std::nullopt);
}

TEST_F(LinuxTerminalAutomationTest, ProcessesWithOddNamesAreReadRightly) {
    addProgram(60);
    addShell(100, 60, 1, {{"WINDOWID", "5001"}}, "tmux: client) 1 (x");
    windows.present = {{5001, 60}};
    EXPECT_EQ(focus(u"/dev/pts/1"_s).terminal, 60);
}

// --- Permission ----------------------------------------------------------------------------------

namespace {

class AutomationPermissionTest : public AutomationTest {
protected:
    std::shared_ptr<std::optional<bool>> check() {
        const auto answer = std::make_shared<std::optional<bool>>();
        const auto run = [](LinuxTerminalAutomation& asked,
                            std::shared_ptr<std::optional<bool>> place) -> Task<> {
            *place = co_await asked.checkPermission();
        };
        run(automation(), answer);
        return answer;
    }

    PrivateBus privateBus;
};

} // namespace

TEST_F(AutomationPermissionTest, IsGrantedWhenTheBusAnswers) {
    bus = privateBus.connect();
    const auto answer = check();
    EXPECT_TRUE(eventually([&] { return answer->has_value(); }));
    EXPECT_EQ(*answer, true);
}

TEST_F(AutomationPermissionTest, IsDeniedWithoutABus) {
    const auto answer = check();
    EXPECT_TRUE(eventually([&] { return answer->has_value(); }));
    EXPECT_EQ(*answer, false);
}

TEST_F(AutomationPermissionTest, IsDeniedWhenTheBusHasNotAnsweredAfterThreeSeconds) {
    bus = privateBus.connect();
    const FrozenBus frozen(bus);
    const auto answer = check();
    scheduler.advance(2999ms);
    EXPECT_EQ(*answer, std::nullopt);
    scheduler.advance(1ms);
    EXPECT_EQ(*answer, false);
}

TEST_F(AutomationPermissionTest, IsDeniedWhenTheAutomationGoesMeanwhile) {
    bus = privateBus.connect();
    const FrozenBus frozen(bus);
    const auto answer = check();
    endAutomation();
    EXPECT_EQ(*answer, false);
}

TEST_F(AutomationPermissionTest, NothingIsAskedOfTheUser) {
    automation().requestPermissions();
    EXPECT_EQ(scheduler.sleepers(), 0U);
}
