#include "app/AppDelegate.h"
#include "app/SettingsWindowController.h"
#include "app/StatusBarController.h"
#include "unit/models/AppStateFixture.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr KeyDown toggleKey{KeyCode::backtick, ModifierFlag::control};

class Shell : public AppStateTest {
protected:
    AppDelegate& startDelegate() {
        start();
        m_delegate = std::make_unique<AppDelegate>(platform(), app(), [this] { ++settingsOpened; });
        m_delegate->installMonitors();
        return *m_delegate;
    }

    int settingsOpened = 0;

private:
    std::unique_ptr<AppDelegate> m_delegate;
};

} // namespace

TEST_F(Shell, TheToggleKeySwitchesThereAndBackAsATask) {
    startDelegate();
    keyMonitor.pressElsewhere(toggleKey);
    EXPECT_FALSE(app().isCompactMode()) << "nothing happens within the handler";
    scheduler.runPosted();
    EXPECT_TRUE(app().isCompactMode());
    EXPECT_TRUE(keyMonitor.pressHere(toggleKey)) << "consumed";
    scheduler.runPosted();
    EXPECT_FALSE(app().isCompactMode());
}

TEST_F(Shell, EveryOtherLocalKeyPassesUntouched) {
    startDelegate();
    EXPECT_FALSE(keyMonitor.pressHere({KeyCode::space, ModifierFlag::option}));
    EXPECT_FALSE(keyMonitor.pressHere({KeyCode::escape, 0}));
}

TEST_F(Shell, EscapeElsewhereCancelsOnlyWhileRecordingInCompactMode) {
    startDelegate();
    app().startRecording();
    keyMonitor.pressElsewhere({KeyCode::escape, 0});
    scheduler.runPosted();
    EXPECT_TRUE(app().isRecording());
    app().switchToCompactMode();
    keyMonitor.pressElsewhere({KeyCode::escape, 0});
    scheduler.runPosted();
    EXPECT_FALSE(app().isRecording());
    EXPECT_TRUE(feed().contains(u"Recording cancelled — discarded"_s));
}

TEST_F(Shell, OptionAndSpaceEndsTheTake) {
    startDelegate();
    app().switchToCompactMode();
    app().startRecording();
    keyMonitor.pressElsewhere({KeyCode::space, ModifierFlag::option});
    scheduler.runPosted();
    EXPECT_FALSE(app().isRecording());
    EXPECT_TRUE(feed().contains(u"Transcribing audio..."_s));
}

TEST_F(Shell, MonitorsAreInstalledOnceAndEndWithTheProgram) {
    AppDelegate& delegate = startDelegate();
    delegate.installMonitors();
    EXPECT_EQ(keyMonitor.monitorsMade, 2);
    delegate.applicationWillTerminate();
    EXPECT_FALSE(keyMonitor.isWatched());
}

TEST_F(Shell, AKeyBeforeTheEndOfTheStateDoesNothingAfterIt) {
    const auto window = windowSystem.add(u"Quorvin"_s);
    startDelegate();
    keyMonitor.pressElsewhere(toggleKey);
    endProgram();
    scheduler.runPosted();
    EXPECT_TRUE(window->isVisible());
    keyMonitor.pressElsewhere(toggleKey);
    scheduler.runPosted();
    EXPECT_TRUE(window->isVisible());
}

TEST_F(Shell, AFurtherStartInCompactModeChangesNothing) {
    const AppDelegate& delegate = startDelegate();
    EXPECT_TRUE(delegate.applicationShouldHandleReopen());
    app().switchToCompactMode();
    EXPECT_FALSE(delegate.applicationShouldHandleReopen());
    endProgram();
    EXPECT_TRUE(delegate.applicationShouldHandleReopen());
}

TEST_F(Shell, TheMainWindowIsShownFromAHiddenState) {
    const auto window = windowSystem.add(u"Quorvin"_s);
    AppDelegate& delegate = startDelegate();
    window->orderOut();
    delegate.showMainWindow();
    scheduler.runPosted();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(windowSystem.activations, 1);
}

TEST_F(Shell, ShowingTheMainWindowLeavesCompactMode) {
    const auto window = windowSystem.add(u"Quorvin"_s);
    AppDelegate& delegate = startDelegate();
    app().switchToCompactMode();
    EXPECT_FALSE(window->isVisible());
    delegate.showMainWindow();
    scheduler.runPosted();
    EXPECT_FALSE(app().isCompactMode());
    EXPECT_TRUE(window->isVisible());
}

TEST_F(Shell, TheStatusItemHasItsFourEntries) {
    AppDelegate& delegate = startDelegate();
    StatusBarController controller(statusItem);
    int ended = 0;
    controller.setup(delegate, [&] { ++ended; });
    ASSERT_EQ(statusItem.entries.size(), 4U);
    QStringList titles;
    QStringList keys;
    for (const auto& entry : statusItem.entries) {
        titles.append(entry.title);
        keys.append(entry.keyEquivalent);
    }
    EXPECT_EQ(titles, (QStringList{u"Show Quorvin"_s, u"Settings…"_s, u"Compact Mode"_s,
                                   u"Quit Quorvin"_s}));
    EXPECT_EQ(keys, (QStringList{QString(), u"Meta+,"_s, u"Ctrl+`"_s, u"Meta+Q"_s}));
    statusItem.entries[1].action();
    statusItem.entries[2].action();
    statusItem.entries[3].action();
    scheduler.runPosted();
    EXPECT_EQ(settingsOpened, 1);
    EXPECT_TRUE(app().isCompactMode());
    EXPECT_EQ(ended, 1);
    statusItem.entries[0].action();
    scheduler.runPosted();
    EXPECT_FALSE(app().isCompactMode());
}

TEST_F(Shell, TheStatusSymbolTellsTheState) {
    EXPECT_EQ(statusSymbol(false, false), u"mic");
    EXPECT_EQ(statusSymbol(true, false), u"mic.fill");
    EXPECT_EQ(statusSymbol(true, true), u"mic.fill");
    EXPECT_EQ(statusSymbol(false, true), u"waveform");
}

TEST_F(Shell, TheStatusIconChangesWithTheState) {
    StatusBarController controller(statusItem);
    controller.setup(startDelegate(), [] {});
    const QImage idle = statusItem.image;
    EXPECT_FALSE(idle.isNull());
    EXPECT_EQ(statusItem.description, u"Quorvin");
    controller.updateIcon(true, false);
    EXPECT_NE(statusItem.image, idle);
    controller.updateIcon(false, false);
    EXPECT_EQ(statusItem.image, idle);
}

TEST(SettingsWindowSize, AStoredSizeThatIsLargeEnoughIsTaken) {
    EXPECT_EQ(settingsWindowSize(780, 560, 1000), QSizeF(780, 560));
    EXPECT_EQ(settingsWindowSize(1234.5, 900, 1000), QSizeF(1234.5, 900));
}

TEST(SettingsWindowSize, ASmallerOneIsIgnored) {
    EXPECT_EQ(settingsWindowSize(779, 900, 1000), QSizeF(1160, 800));
    EXPECT_EQ(settingsWindowSize(900, 559, 1000), QSizeF(1160, 800));
    EXPECT_EQ(settingsWindowSize(900, std::nullopt, 1000), QSizeF(1160, 800));
}

TEST(SettingsWindowSize, FollowsTheScreenWithinBounds) {
    const auto size = [](double visibleHeight) {
        return settingsWindowSize(std::nullopt, std::nullopt, visibleHeight);
    };
    EXPECT_EQ(size(600), QSizeF(900, 640));
    EXPECT_EQ(size(2000), QSizeF(1305, 900));
}

TEST(SettingsWindowSize, WithoutAScreenIsFixed) {
    EXPECT_EQ(settingsWindowSize(std::nullopt, std::nullopt, std::nullopt), QSizeF(960, 680));
}
