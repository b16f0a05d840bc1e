#include "AppStateFixture.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using AppStateWindows = AppStateTest;

TEST_F(AppStateWindows, LevelAndOpacityGoToTheMainWindow) {
    const auto panel = windowSystem.add(u"Panel"_s, true);
    const auto window = windowSystem.add(u"Quorvin"_s);
    AppState& app = start();
    app.setWindowOpacity(0.6);
    app.applyWindowOpacity();
    app.applyAlwaysOnTop();
    EXPECT_EQ(window->alpha, 0.6);
    EXPECT_EQ(window->level, AppWindow::Level::floating);
    EXPECT_EQ(panel->alpha, 1.0);
    EXPECT_EQ(panel->level, AppWindow::Level::normal);
    app.setAlwaysOnTop(false);
    app.applyAlwaysOnTop();
    EXPECT_EQ(window->level, AppWindow::Level::normal);
}

TEST_F(AppStateWindows, NothingChangesWhenOnlyPanelsAreOpen) {
    const auto panel = windowSystem.add(u"Panel"_s, true);
    AppState& app = start();
    app.setWindowOpacity(0.6);
    app.applyWindowOpacity();
    app.applyAlwaysOnTop();
    EXPECT_EQ(panel->alpha, 1.0);
    EXPECT_EQ(panel->level, AppWindow::Level::normal);
}

TEST_F(AppStateWindows, StoredLevelAndOpacityWaitForTheirNextChange) {
    defaults.setDouble(u"windowOpacity"_s, 0.5);
    const auto window = windowSystem.add(u"Quorvin"_s);
    start();
    scheduler.runPosted();
    EXPECT_EQ(window->alpha, 1.0);
    EXPECT_EQ(window->level, AppWindow::Level::normal);
}

TEST_F(AppStateWindows, CompactModeHidesEveryWindowButPanels) {
    const auto main = windowSystem.add(u"Quorvin"_s);
    const auto settings = windowSystem.add(u"Settings"_s);
    const auto panel = windowSystem.add(u"Panel"_s, true);
    AppState& app = start();
    EXPECT_FALSE(app.didUserTriggerWindowSwitch());
    app.switchToCompactMode();
    EXPECT_TRUE(app.isCompactMode());
    EXPECT_EQ(app.activeWindow(), AppState::ActiveWindow::compact);
    EXPECT_TRUE(app.didUserTriggerWindowSwitch());
    EXPECT_FALSE(main->visible);
    EXPECT_FALSE(settings->visible);
    EXPECT_TRUE(panel->visible);
}

TEST_F(AppStateWindows, TheSettingsInFrontAreNotTakenForTheMainWindow) {
    const auto main = windowSystem.add(u"Quorvin"_s);
    const auto settings = windowSystem.add(u"Settings"_s);
    AppState& app = start();
    windowSystem.becomeKey(settings);
    app.switchToCompactMode();
    app.switchToMainWindow(true);
    EXPECT_TRUE(main->visible);
    EXPECT_FALSE(settings->visible);
}

TEST_F(AppStateWindows, InCompactModeOnlyTheSettingsMayComeForward) {
    const auto main = windowSystem.add(u"Quorvin"_s);
    const auto settings = windowSystem.add(u"Settings"_s);
    start().switchToCompactMode();
    main->visible = true;
    windowSystem.becomeKey(main);
    EXPECT_FALSE(main->visible);
    settings->visible = true;
    windowSystem.becomeKey(settings);
    EXPECT_TRUE(settings->visible);
}

TEST_F(AppStateWindows, WhatTheToolkitBringsBackIsHiddenAQuarterOfASecondLater) {
    const auto main = windowSystem.add(u"Quorvin"_s);
    const auto settings = windowSystem.add(u"Settings"_s);
    start().switchToCompactMode();
    main->visible = true;
    settings->visible = true;
    scheduler.advance(249ms);
    EXPECT_TRUE(main->visible);
    scheduler.advance(1ms);
    EXPECT_FALSE(main->visible);
    EXPECT_TRUE(settings->visible);
}

TEST_F(AppStateWindows, AnEarlyWayBackDoesNotCallTheSecondSweepOff) {
    const auto main = windowSystem.add(u"Quorvin"_s);
    AppState& app = start();
    app.switchToCompactMode();
    app.switchToMainWindow(true);
    EXPECT_TRUE(main->visible);
    scheduler.advance(250ms);
    EXPECT_FALSE(main->visible);
}

TEST_F(AppStateWindows, WithoutAWindowTheProgramComesForwardAllTheSame) {
    windowSystem.add(u"Panel"_s, true);
    AppState& app = start();
    app.switchToCompactMode();
    app.switchToMainWindow(true);
    EXPECT_EQ(app.activeWindow(), AppState::ActiveWindow::main);
    EXPECT_EQ(windowSystem.activations, 1);
}

TEST_F(AppStateWindows, SwitchingTwiceLeavesOneGuard) {
    windowSystem.add(u"Quorvin"_s);
    AppState& app = start();
    app.switchToCompactMode();
    app.switchToCompactMode();
    EXPECT_EQ(windowSystem.subscriptions(), 1U);
}

TEST_F(AppStateWindows, BackInTheMainWindowPlainWindowsStay) {
    const auto main = windowSystem.add(u"Quorvin"_s);
    AppState& app = start();
    app.switchToCompactMode();
    scheduler.advance(1s);
    app.switchToMainWindow(true);
    EXPECT_FALSE(app.isCompactMode());
    EXPECT_EQ(windowSystem.subscriptions(), 0U);
    EXPECT_TRUE(main->visible);
    EXPECT_EQ(windowSystem.activations, 1);
    windowSystem.becomeKey(main);
    EXPECT_TRUE(main->visible);
}

TEST_F(AppStateWindows, TheWindowInUseAtTheSwitchIsTheOneThatComesBack) {
    const auto first = windowSystem.add(u"Something else"_s);
    const auto second = windowSystem.add(u"Quorvin"_s);
    windowSystem.becomeKey(second);
    AppState& app = start();
    app.switchToCompactMode();
    scheduler.advance(1s);
    app.switchToMainWindow(false);
    EXPECT_TRUE(second->visible);
    EXPECT_FALSE(first->visible);
    EXPECT_EQ(windowSystem.activations, 0);
}

TEST_F(AppStateWindows, ASilentTakeInCompactModeSendsTheDraftThatWasLeft) {
    AppState& app = start();
    workspace.running = {{900, u"Terminal"_s, u"com.apple.Terminal"_s}};
    app.setDraftText(u"left over"_s);
    app.switchToCompactMode();
    app.startRecording();
    app.stopRecording();
    scheduler.advance(1s);
    EXPECT_EQ(pasteboard.contents, u"left over"_s);
    EXPECT_EQ(app.draftText(), QString());
}

TEST_F(AppStateWindows, OutsideCompactModeADraftWaitsForTheUser) {
    AppState& app = start();
    workspace.running = {{900, u"Terminal"_s, u"com.apple.Terminal"_s}};
    dictate(u"wait for me"_s);
    scheduler.advance(1s);
    EXPECT_EQ(app.draftText(), u"wait for me"_s);
    EXPECT_FALSE(pasteboard.contents.has_value());
}
