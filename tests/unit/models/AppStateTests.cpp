#include "AppStateFixture.h"

#include <QSignalSpy>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using AppStateSettings = AppStateTest;
using AppStateChannels = AppStateTest;
using AppStateHistory = AppStateTest;

TEST_F(AppStateSettings, FieldsBeginAsDocumented) {
    const AppState& app = start();
    EXPECT_EQ(app.state(), AppState::AppMode::idle);
    EXPECT_FALSE(app.isRecording());
    EXPECT_FALSE(app.isTranscribing());
    EXPECT_EQ(app.draftText(), QString());
    EXPECT_EQ(app.audioLevel(), 0.0);
    EXPECT_EQ(app.recordingDuration(), 0.0);
    EXPECT_TRUE(app.attachedImages().isEmpty());
    EXPECT_EQ(app.activeWindow(), AppState::ActiveWindow::main);
    EXPECT_FALSE(app.isCompactMode());
    EXPECT_EQ(app.compactBarHeights(), QList<double>(96, 0.03));
    EXPECT_FALSE(app.errorMessage().has_value());
    EXPECT_FALSE(app.showError());
    EXPECT_FALSE(app.updateAvailable());
    EXPECT_EQ(app.updatePhase(), UpdatePhase());
    EXPECT_FALSE(app.lastFocusedAppPID().has_value());
}

TEST_F(AppStateSettings, SettersStoreAtOnceWithTheirOwnType) {
    AppState& app = start();
    app.setLanguage(u"de"_s);
    app.setSelectedDevice(u"42"_s);
    app.setEngineTier(u"large"_s);
    app.setSelectedTheme(u"nord"_s);
    app.setAnimationStyle(u"pulse"_s);
    app.setVadAutoStop(false);
    app.setTranslateToEnglish(true);
    app.setAppendMode(false);
    app.setAlwaysOnTop(false);
    app.setAgentsIncluded(false);
    app.setSilenceTimeout(7);
    app.setWindowOpacity(0.75);
    app.setInputGainDB(-6.0);
    app.setNoiseGatePercent(0.0);
    EXPECT_EQ(defaults.string(u"language"_s), u"de"_s);
    EXPECT_EQ(defaults.string(u"selectedDevice"_s), u"42"_s);
    EXPECT_EQ(defaults.string(u"engineTier"_s), u"large"_s);
    EXPECT_EQ(defaults.string(u"selectedTheme"_s), u"nord"_s);
    EXPECT_EQ(defaults.string(u"animationStyle"_s), u"pulse"_s);
    EXPECT_EQ(defaults.boolean(u"vadAutoStop"_s), false);
    EXPECT_EQ(defaults.boolean(u"translateToEnglish"_s), true);
    EXPECT_EQ(defaults.boolean(u"appendMode"_s), false);
    EXPECT_EQ(defaults.boolean(u"alwaysOnTop"_s), false);
    EXPECT_EQ(defaults.boolean(u"agentsIncluded"_s), false);
    EXPECT_EQ(defaults.number(u"silenceTimeout"_s), 7);
    EXPECT_EQ(defaults.number(u"windowOpacity"_s), 0.75);
    EXPECT_EQ(defaults.number(u"inputGainDB"_s), -6.0);
    EXPECT_EQ(defaults.number(u"noiseGatePercent"_s), 0.0);
    EXPECT_EQ(app.noiseGatePercent(), 0.0);
}

TEST_F(AppStateSettings, AGateOfZeroHoldsUntilTheNextStart) {
    start().setNoiseGatePercent(0.0);
    EXPECT_EQ(app().noiseGatePercent(), 0.0);
    EXPECT_EQ(start().noiseGatePercent(), 1.0);
}

TEST_F(AppStateSettings, ATimeoutOfZeroReadsAsTwelveAndFiveAsFive) {
    defaults.setInteger(u"silenceTimeout"_s, 0);
    EXPECT_EQ(start().silenceTimeout(), 12);
    defaults.setInteger(u"silenceTimeout"_s, 5);
    EXPECT_EQ(start().silenceTimeout(), 5);
}

TEST_F(AppStateSettings, StringsInPlaceOfBooleansGiveTheDefaults) {
    defaults.setString(u"vadAutoStop"_s, u"no"_s);
    defaults.setString(u"translateToEnglish"_s, u"yes"_s);
    const AppState& app = start();
    EXPECT_TRUE(app.vadAutoStop());
    EXPECT_FALSE(app.translateToEnglish());
}

TEST_F(AppStateSettings, SoundsSwitchTheSoundService) {
    start().setSoundsEnabled(false);
    EXPECT_FALSE(SoundService::shared().isEnabled);
    EXPECT_EQ(defaults.boolean(u"soundsEnabled"_s), false);
}

TEST_F(AppStateSettings, ObserversLearnOfAChangeOnce) {
    AppState& app = start();
    const QSignalSpy changes(&app, &AppState::languageChanged);
    app.setLanguage(u"fr"_s);
    app.setLanguage(u"fr"_s);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(AppStateSettings, AnUnknownTierLooksForTheSmallModel) {
    AppState& app = start();
    app.setEngineTier(u"gigantic"_s);
    app.applyEngineTier();
    EXPECT_EQ(app.errorMessage(), u"Model not found: ggml-small.bin"_s);
    EXPECT_EQ(app.engineTier(), u"gigantic"_s);
}

TEST_F(AppStateSettings, AMissingModelLeavesModelLoadedAsItWas) {
    AppState& app = start();
    scheduler.runPosted();
    ASSERT_TRUE(app.modelLoaded());
    app.setEngineTier(u"large"_s);
    app.applyEngineTier();
    scheduler.runPosted();
    EXPECT_TRUE(app.modelLoaded());
    EXPECT_EQ(app.errorMessage(), u"Model not found: ggml-large-v3.bin"_s);
}

TEST_F(AppStateSettings, ATierWithItsModelLoadsThatModel) {
    AppState& app = start();
    scheduler.runPosted();
    QFile model(bundle.home + u"/models/ggml-medium.bin"_s);
    ASSERT_TRUE(model.open(QIODevice::WriteOnly));
    model.close();
    notifications.requests.clear();
    app.setEngineTier(u"medium"_s);
    app.applyEngineTier();
    EXPECT_FALSE(app.modelLoaded());
    scheduler.runPosted();
    EXPECT_TRUE(app.modelLoaded());
    EXPECT_EQ(app.whisperService().modelPath(), model.fileName());
    EXPECT_EQ(banners(), QStringList{u"Quorvin Ready"_s});
}

TEST_F(AppStateChannels, TheFeedHoldsFiftyEntriesAndDropsTheOldest) {
    AppState& app = start();
    const qsizetype atStart = app.activityLog().size();
    for (qsizetype i = atStart; i < 50; ++i) {
        app.log(ActivityType::info, QString::number(i));
    }
    ASSERT_EQ(app.activityLog().size(), 50);
    const ActivityEntry first = app.activityLog().first();
    const ActivityEntry second = app.activityLog().at(1);
    app.log(ActivityType::info, u"newest"_s);
    ASSERT_EQ(app.activityLog().size(), 50);
    EXPECT_FALSE(app.activityLog().contains(first));
    EXPECT_EQ(app.activityLog().first(), second);
    EXPECT_EQ(app.activityLog().last().message, u"newest"_s);
}

TEST_F(AppStateChannels, TheFeedCanBeCleared) {
    AppState& app = start();
    app.log(ActivityType::info, u"something"_s);
    app.clearActivityLog();
    EXPECT_TRUE(app.activityLog().isEmpty());
}

TEST_F(AppStateChannels, TheWayToTheSettingsTakesTheErrorAway) {
    AppState& app = start();
    app.showError(u"accessibility"_s);
    workspace.openedURLs.clear();
    app.openAccessibilitySettings();
    EXPECT_FALSE(app.showError());
    EXPECT_EQ(
        workspace.openedURLs,
        std::vector{
            u"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"_s});
}

TEST_F(AppStateChannels, AnErrorAboutAccessibilityIsMarkedInAnyCasing) {
    AppState& app = start();
    app.showError(u"ACCESSIBILITY permission required."_s);
    EXPECT_TRUE(app.showError());
    EXPECT_TRUE(app.isAccessibilityError());
    EXPECT_EQ(app.errorMessage(), u"ACCESSIBILITY permission required."_s);
    app.showError(u"Something else"_s);
    EXPECT_FALSE(app.isAccessibilityError());
}

TEST_F(AppStateChannels, DismissingClearsTheError) {
    AppState& app = start();
    app.showError(u"accessibility"_s);
    app.dismissError();
    EXPECT_FALSE(app.showError());
    EXPECT_FALSE(app.errorMessage().has_value());
    EXPECT_FALSE(app.isAccessibilityError());
}

TEST_F(AppStateChannels, ALaterFeedbackStandsForItsFullDuration) {
    AppState& app = start();
    app.showCompactFeedback(u"first"_s, 1.5);
    scheduler.advance(1s);
    app.showCompactFeedback(u"second"_s, 1.5);
    scheduler.advance(1499ms);
    EXPECT_EQ(app.compactFeedback(), u"second"_s);
    scheduler.advance(1ms);
    EXPECT_EQ(app.compactFeedback(), QString());
}

TEST_F(AppStateHistory, IsReadNewestFirst) {
    AppState& app = start();
    app.historyService()->add(u"one"_s, u"en"_s, 1.0, QString());
    app.loadHistory();
    ASSERT_EQ(app.historyEntries().size(), 1);
    EXPECT_EQ(app.historyEntries().first().text, u"one"_s);
}

TEST_F(AppStateHistory, IsEmptyWithoutAStore) {
    bundle.applicationSupport = directory.filePath(u"a file"_s);
    QFile blocker(*bundle.applicationSupport);
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    AppState& app = start();
    EXPECT_EQ(app.historyService(), nullptr);
    app.loadHistory();
    EXPECT_TRUE(app.historyEntries().isEmpty());
}

TEST_F(AppStateHistory, IsClearedWithTheStore) {
    AppState& app = start();
    app.historyService()->add(u"one"_s, u"en"_s, 1.0, QString());
    app.loadHistory();
    app.clearHistory();
    EXPECT_TRUE(app.historyEntries().isEmpty());
    app.loadHistory();
    EXPECT_TRUE(app.historyEntries().isEmpty());
}

TEST_F(AppStateHistory, ThatCannotBeClearedIsBackAtTheNextLoad) {
    AppState& app = start();
    app.historyService()->add(u"one"_s, u"en"_s, 1.0, QString());
    app.loadHistory();
    ASSERT_TRUE(QFile::remove(*bundle.applicationSupport + u"/quorvin/history.db"_s));
    app.clearHistory();
    EXPECT_TRUE(app.historyEntries().isEmpty());
    app.loadHistory();
    EXPECT_EQ(app.historyEntries().size(), 1);
}

TEST_F(AppStateHistory, WithoutAStoreOnlyTheListIsCleared) {
    bundle.applicationSupport = directory.filePath(u"a file"_s);
    QFile blocker(*bundle.applicationSupport);
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    AppState& app = start();
    app.clearHistory();
    EXPECT_TRUE(app.historyEntries().isEmpty());
}
