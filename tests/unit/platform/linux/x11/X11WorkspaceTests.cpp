#include "platform/linux/x11/X11Workspace.h"
#include "unit/platform/linux/x11/XDesktop.h"

#include <QSysInfo>

#include <gmock/gmock.h>
#include <unistd.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::XDesktop;
using quorvin::testing::XServer;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr ProcessID editor = 2'000'000'001; // above what a kernel gives to a process
constexpr ProcessID browser = 2'000'000'002;
constexpr auto stockTerminal = "com.apple.Terminal";

class BareDesktopTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(server.display().isEmpty()) << "Xvfb did not start"; }

    QList<ProcessID> runningProcesses() {
        QList<ProcessID> pids;
        for (const RunningApplication& application : workspace->runningApplications()) {
            pids.append(application.processIdentifier);
        }
        return pids;
    }

    std::optional<ProcessID> frontmostProcess() {
        const auto application = workspace->frontmostApplication();
        return application ? std::optional(application->processIdentifier) : std::nullopt;
    }

    /// Begins to watch the desktop anew, knowing nothing of its past.
    void forgetThePast() { workspace.emplace(connection, QString()); }

    XServer server;
    XDesktop desktop{server.display()};
    XcbConnection connection{server.display()};
    std::optional<X11Workspace> workspace{std::in_place, connection, QString()};
};

class ManagedDesktopTest : public BareDesktopTest {
protected:
    void SetUp() override {
        BareDesktopTest::SetUp();
        ASSERT_TRUE(desktop.startManager()) << "openbox did not start";
    }

    /// Focuses a window and lets the workspace see it.
    void visit(xcb_window_t window, ProcessID pid) {
        ASSERT_TRUE(desktop.focus(window));
        ASSERT_EQ(frontmostProcess(), pid);
        std::ignore = connection.serverTime(); // the notice has come before it
        connection.processEvents();
    }
};

} // namespace

TEST_F(ManagedDesktopTest, TerminalsAreListedInTheOrderOfTheirOpening) {
    const ProcessID first = desktop.startTerminal();
    const ProcessID second = desktop.startTerminal();
    const auto running = workspace->runningApplications();
    ASSERT_EQ(running.size(), 2U);
    EXPECT_EQ(running[0].processIdentifier, first);
    EXPECT_EQ(running[1].processIdentifier, second);
    EXPECT_EQ(running[0].localizedName, u"XTerm"_s);
    EXPECT_EQ(running[0].bundleIdentifier, QString::fromUtf8(stockTerminal));
}

TEST_F(ManagedDesktopTest, ATerminalUnderAnotherClassIsKnownByItsExecutable) {
    std::ignore = desktop.startTerminal({u"-class"_s, u"Scratch"_s, u"-name"_s, u"scratch"_s});
    const auto running = workspace->runningApplications();
    ASSERT_EQ(running.size(), 1U);
    EXPECT_EQ(running[0].localizedName, u"Scratch"_s);
    EXPECT_EQ(running[0].bundleIdentifier, QString::fromUtf8(stockTerminal));
}

TEST_F(ManagedDesktopTest, OtherProgramsHaveANameButNoIdentifier) {
    desktop.open({.pid = editor, .instanceName = "edit", .className = "Editor"});
    desktop.open({.pid = browser, .title = "A page"});
    const auto running = workspace->runningApplications();
    ASSERT_EQ(running.size(), 2U);
    EXPECT_EQ(running[0].localizedName, u"Editor"_s);
    EXPECT_EQ(running[0].bundleIdentifier, std::nullopt);
    EXPECT_EQ(running[1].localizedName, u"A page"_s);
}

TEST_F(ManagedDesktopTest, AProcessWithManyWindowsIsListedOnce) {
    desktop.open({.pid = editor});
    desktop.open({.pid = browser});
    desktop.open({.pid = editor});
    EXPECT_THAT(runningProcesses(), ElementsAre(editor, browser));
}

TEST_F(ManagedDesktopTest, AWindowThatNamesNoProcessOfThisMachineIsNotListed) {
    desktop.open({});
    desktop.open({.pid = 0});
    desktop.open({.pid = -1});
    desktop.open({.pid = editor, .machine = "far-away.example.org"});
    desktop.open({.pid = browser, .machine = QSysInfo::machineHostName().toUtf8()});
    EXPECT_THAT(runningProcesses(), ElementsAre(browser));
}

TEST_F(ManagedDesktopTest, AMachineIsTheSameWithItsDomain) {
    desktop.open({.pid = browser,
                  .machine = QSysInfo::machineHostName().toUpper().toUtf8() + ".example.org"});
    EXPECT_THAT(runningProcesses(), ElementsAre(browser));
}

TEST_F(ManagedDesktopTest, TheFrontmostApplicationIsTheOneWithTheFocus) {
    const auto first = desktop.open({.pid = editor});
    const auto second = desktop.open({.pid = browser});
    visit(first, editor);
    EXPECT_EQ(frontmostProcess(), editor);
    visit(second, browser);
    EXPECT_EQ(frontmostProcess(), browser);
}

TEST_F(ManagedDesktopTest, WithoutAWindowNothingIsFrontmostOrRunning) {
    EXPECT_EQ(workspace->frontmostApplication(), std::nullopt);
    EXPECT_THAT(workspace->runningApplications(), IsEmpty());
    const auto window = desktop.open({.pid = editor});
    visit(window, editor);
    desktop.close(window);
    EXPECT_TRUE(desktop.waitUntil([&] { return !frontmostProcess(); }));
    EXPECT_THAT(workspace->runningApplications(), IsEmpty());
}

TEST_F(ManagedDesktopTest, AWindowOfNoProcessInFrontIsNotKnown) {
    ASSERT_TRUE(desktop.focus(desktop.open({})));
    EXPECT_EQ(workspace->frontmostApplication(), std::nullopt);
}

TEST_F(ManagedDesktopTest, ActivationSwitchesBetweenTerminals) {
    const ProcessID first = desktop.startTerminal();
    const ProcessID second = desktop.startTerminal();
    for (const ProcessID pid : {first, second, first}) {
        EXPECT_EQ(workspace->activate(pid), Workspace::Request::made);
        EXPECT_TRUE(desktop.waitUntil([&] { return frontmostProcess() == pid; }));
    }
}

TEST_F(ManagedDesktopTest, AProcessWithoutAWindowCannotBeActivated) {
    const auto window = desktop.open({.pid = editor});
    visit(window, editor);
    EXPECT_EQ(workspace->activate(browser), Workspace::Request::notPossibleHere);
    EXPECT_EQ(workspace->activate(getpid()), Workspace::Request::notPossibleHere);
    EXPECT_EQ(workspace->activate(0), Workspace::Request::notPossibleHere);
    EXPECT_EQ(frontmostProcess(), editor);
}

TEST_F(ManagedDesktopTest, AnIconIsOpenedByActivation) {
    const auto icon = desktop.open({.pid = editor});
    const auto other = desktop.open({.pid = browser});
    visit(other, browser);
    desktop.iconify(icon);
    ASSERT_TRUE(desktop.waitUntil([&] { return !desktop.isShown(icon); }));
    EXPECT_EQ(workspace->activate(editor), Workspace::Request::made);
    EXPECT_TRUE(desktop.waitUntil([&] { return desktop.isShown(icon) && desktop.hasFocus(icon); }));
}

TEST_F(ManagedDesktopTest, OfManyWindowsTheOneThatWasFocusedLastIsActivated) {
    const auto first = desktop.open({.pid = editor});
    const auto second = desktop.open({.pid = editor});
    const auto third = desktop.open({.pid = editor});
    const auto other = desktop.open({.pid = browser});
    for (const auto wanted : {second, first, third, first}) {
        visit(wanted, editor);
        visit(other, browser);
        EXPECT_EQ(workspace->activate(editor), Workspace::Request::made);
        EXPECT_TRUE(desktop.waitUntil([&] { return desktop.hasFocus(wanted); }));
    }
}

TEST_F(ManagedDesktopTest, AWindowInFrontStaysThereThoughItsNoticeWasNotReadYet) {
    const auto first = desktop.open({.pid = editor});
    const auto second = desktop.open({.pid = editor});
    visit(first, editor);
    visit(second, editor);
    connection.blockSignals(true);
    ASSERT_TRUE(desktop.focus(first));
    connection.blockSignals(false);
    EXPECT_EQ(workspace->activate(editor), Workspace::Request::made);
    // Whatever that has caused comes before the next window.
    ASSERT_TRUE(desktop.focus(desktop.open({.pid = browser})));
    EXPECT_TRUE(desktop.isAboveManaged(first, second));
}

TEST_F(ManagedDesktopTest, WindowsThatWereNeverFocusedHereGoByTheirUserTime) {
    // The count has wrapped around between the first and the second.
    desktop.open({.pid = editor, .userTime = 0xffff'ff00U});
    const auto latest = desktop.open({.pid = editor, .userTime = 200});
    desktop.open({.pid = editor, .userTime = 100});
    desktop.open({.pid = editor});
    const auto other = desktop.open({.pid = browser});
    visit(other, browser);
    forgetThePast();
    EXPECT_EQ(workspace->activate(editor), Workspace::Request::made);
    EXPECT_TRUE(desktop.waitUntil([&] { return desktop.hasFocus(latest); }));
}

TEST_F(ManagedDesktopTest, AUserTimeMayBeKeptAtAWindowOfItsOwn) {
    desktop.open({.pid = editor, .userTime = 100});
    const auto latest = desktop.open({.pid = editor, .userTime = 200, .hasUserTimeWindow = true});
    desktop.open({.pid = editor, .userTime = 150});
    const auto other = desktop.open({.pid = browser});
    visit(other, browser);
    forgetThePast();
    EXPECT_EQ(workspace->activate(editor), Workspace::Request::made);
    EXPECT_TRUE(desktop.waitUntil([&] { return desktop.hasFocus(latest); }));
}

TEST_F(ManagedDesktopTest, WithNothingElseToGoByTheHighestWindowIsActivated) {
    const auto lowest = desktop.open({.pid = editor});
    const auto highest = desktop.open({.pid = editor});
    const auto middle = desktop.open({.pid = editor});
    const auto other = desktop.open({.pid = browser});
    visit(lowest, editor);
    visit(middle, editor);
    visit(highest, editor);
    visit(other, browser);
    forgetThePast();
    EXPECT_EQ(workspace->activate(editor), Workspace::Request::made);
    EXPECT_TRUE(desktop.waitUntil([&] { return desktop.hasFocus(highest); }));
}

TEST_F(ManagedDesktopTest, AClosedWindowIsForgotten) {
    const auto first = desktop.open({.pid = editor});
    const auto second = desktop.open({.pid = editor});
    const auto other = desktop.open({.pid = browser});
    visit(first, editor);
    visit(second, editor);
    visit(other, browser);
    desktop.close(second);
    ASSERT_TRUE(desktop.waitUntil([&] { return desktop.managed().size() == 2; }));
    EXPECT_EQ(workspace->activate(editor), Workspace::Request::made);
    EXPECT_TRUE(desktop.waitUntil([&] { return desktop.hasFocus(first); }));
}

TEST_F(ManagedDesktopTest, AWindowThatClosesInBetweenDoesNoHarm) {
    const auto survivor = desktop.open({.pid = browser});
    for (int i = 0; i < 20; ++i) {
        const auto window = desktop.open({.pid = editor});
        desktop.close(window);
        // The window manager may list the window still, or no more.
        std::ignore = workspace->activate(editor);
        std::ignore = workspace->runningApplications();
        std::ignore = workspace->frontmostApplication();
    }
    EXPECT_TRUE(connection.isOpen());
    EXPECT_TRUE(desktop.waitUntil([&] { return runningProcesses() == QList{browser}; }));
    EXPECT_EQ(workspace->activate(editor), Workspace::Request::notPossibleHere);
    EXPECT_EQ(workspace->activate(browser), Workspace::Request::made);
    EXPECT_TRUE(desktop.waitUntil([&] { return desktop.hasFocus(survivor); }));
}

TEST_F(ManagedDesktopTest, WhatAManagerLeftBehindIsNotBelieved) {
    const auto window = desktop.open({.pid = editor});
    desktop.killManager();
    ASSERT_THAT(desktop.managed(), ElementsAre(window)) << "openbox has tidied up";
    desktop.close(window);
    desktop.open({.pid = browser});
    EXPECT_TRUE(desktop.waitUntil([&] { return runningProcesses() == QList{browser}; }));
}

TEST_F(BareDesktopTest, WithoutAManagerTheWindowsShownAreListed) {
    const auto hidden = desktop.open({.pid = editor});
    desktop.open({.pid = browser});
    ASSERT_TRUE(desktop.waitUntil([&] { return desktop.isShown(hidden); }));
    EXPECT_THAT(runningProcesses(), ElementsAre(editor, browser));
    desktop.hide(hidden);
    ASSERT_TRUE(desktop.waitUntil([&] { return !desktop.isShown(hidden); }));
    EXPECT_THAT(runningProcesses(), ElementsAre(browser));
}

TEST_F(BareDesktopTest, WithoutAManagerActivationFocusesAndRaises) {
    const auto first = desktop.open({.pid = editor});
    const auto second = desktop.open({.pid = browser});
    ASSERT_TRUE(desktop.waitUntil([&] { return desktop.isShown(second); }));
    EXPECT_EQ(workspace->frontmostApplication(), std::nullopt) << "the focus follows the pointer";
    EXPECT_EQ(workspace->activate(editor), Workspace::Request::made);
    EXPECT_TRUE(desktop.hasFocus(first));
    EXPECT_TRUE(desktop.isAbove(first, second));
    EXPECT_EQ(frontmostProcess(), editor);
    EXPECT_EQ(workspace->activate(browser), Workspace::Request::made);
    EXPECT_TRUE(desktop.hasFocus(second));
    EXPECT_TRUE(desktop.isAbove(second, first));
    EXPECT_EQ(frontmostProcess(), browser);
}

TEST_F(BareDesktopTest, AFocusInsideOfAWindowIsThatWindows) {
    const auto window = desktop.open({.pid = editor});
    const xcb_window_t inner = xcb_generate_id(desktop.handle());
    xcb_create_window(desktop.handle(), XCB_COPY_FROM_PARENT, inner, window, 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(desktop.handle(), inner);
    xcb_set_input_focus(desktop.handle(), XCB_INPUT_FOCUS_PARENT, inner, XCB_CURRENT_TIME);
    ASSERT_TRUE(desktop.hasFocus(inner));
    EXPECT_EQ(frontmostProcess(), editor);
}

TEST_F(BareDesktopTest, WithoutAManagerAHiddenProcessCannotBeActivated) {
    const auto window = desktop.open({.pid = editor});
    ASSERT_TRUE(desktop.waitUntil([&] { return desktop.isShown(window); }));
    desktop.hide(window);
    ASSERT_TRUE(desktop.waitUntil([&] { return !desktop.isShown(window); }));
    EXPECT_EQ(workspace->activate(editor), Workspace::Request::notPossibleHere);
}

TEST_F(BareDesktopTest, AManagerThatComesLaterIsNoticed) {
    ASSERT_TRUE(desktop.startManager());
    const auto first = desktop.open({.pid = editor});
    const auto second = desktop.open({.pid = browser});
    ASSERT_TRUE(desktop.focus(second));
    EXPECT_THAT(runningProcesses(), ElementsAre(editor, browser));
    EXPECT_EQ(workspace->activate(editor), Workspace::Request::made);
    EXPECT_TRUE(desktop.waitUntil([&] { return desktop.hasFocus(first); }));
}

TEST_F(ManagedDesktopTest, AServerThatGoesAwayLeavesAnEmptyDesktop) {
    desktop.open({.pid = editor});
    ASSERT_THAT(runningProcesses(), ElementsAre(editor));
    server.stop();
    EXPECT_THAT(workspace->runningApplications(), IsEmpty());
    EXPECT_EQ(workspace->frontmostApplication(), std::nullopt);
    EXPECT_EQ(workspace->activate(editor), Workspace::Request::notPossibleHere);
    EXPECT_FALSE(connection.isOpen());
}

TEST(NoDesktopTest, WithoutADisplayThereAreNoApplications) {
    XcbConnection connection(":no-such-display");
    X11Workspace workspace(connection, QString());
    EXPECT_FALSE(connection.isOpen());
    EXPECT_EQ(workspace.frontmostApplication(), std::nullopt);
    EXPECT_THAT(workspace.runningApplications(), IsEmpty());
    EXPECT_EQ(workspace.activate(getpid()), Workspace::Request::notPossibleHere);
    connection.processEvents();
}
