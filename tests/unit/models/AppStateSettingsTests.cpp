#include "AppStateFixture.h"

#include <QSignalSpy>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using SettingsHandlers = AppStateTest;
using PermissionRefresh = AppStateTest;
using ManualUpdateCheck = AppStateTest;

TEST_F(SettingsHandlers, HandWhatTheEngineNeedsToTheEngine) {
    AppState& app = start();
    app.setLanguage(u"uk"_s);
    app.setTranslateToEnglish(true);
    EXPECT_EQ(app.whisperService().language, u"en"_s) << "no setter forwards";
    EXPECT_FALSE(app.whisperService().translateToEnglish);
    app.applyLanguage();
    app.applyTranslateToEnglish();
    EXPECT_EQ(app.whisperService().language, u"uk"_s);
    EXPECT_TRUE(app.whisperService().translateToEnglish);
}

TEST_F(SettingsHandlers, HandTheDeviceToTheNextTake) {
    audioHost.deviceList = {{.number = 7, .name = "Desk", .inputChannelCount = 1}};
    AppState& app = start();
    app.setSelectedDevice(u"7"_s);
    app.applySelectedDevice();
    app.startRecording();
    EXPECT_EQ(selectedDeviceOfTheTake(), 7U);
    app.cancelRecording();
}

TEST_F(SettingsHandlers, ListTheDevicesAnewDuringATake) {
    AppState& app = start();
    app.startRecording();
    speak();
    audioHost.deviceList = {{.number = 7, .name = "Desk", .inputChannelCount = 1}};
    app.refreshInputDevices();
    EXPECT_EQ(app.availableDevices().last().name, u"Desk"_s);
    EXPECT_TRUE(app.isRecording());
    engineSays(u"Fix the login."_s);
    app.stopRecording();
    scheduler.runPosted();
    EXPECT_EQ(app.draftText(), u"Fix the login."_s);
}

TEST_F(SettingsHandlers, TellOfNewSamplesAndForgetThem) {
    AppState& app = start();
    const QSignalSpy changes(&app, &AppState::latenciesChanged);
    PerformanceMetrics::shared().record(PerformanceMetrics::Kind::modelLoad, 12);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(app.latencies().last().count, 1);
    app.clearLatencies();
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(app.latencies().last().count, 0);
}

TEST_F(PermissionRefresh, ReadsAllThree) {
    audioHost.authorization = MicrophoneAuthorization::denied;
    keyEvents.trusted = false;
    terminalAutomation.permission = false;
    AppState& app = start();
    EXPECT_FALSE(app.isAutomationKnown());
    scheduler.runPosted();
    EXPECT_TRUE(app.isAutomationKnown());
    EXPECT_FALSE(app.automationAuthorized());
    audioHost.authorization = MicrophoneAuthorization::authorized;
    keyEvents.trusted = true;
    terminalAutomation.permission = true;
    app.refreshPermissions();
    EXPECT_TRUE(app.microphoneAuthorized());
    EXPECT_TRUE(app.accessibilityAuthorized());
    EXPECT_TRUE(app.agentService().accessibilityGranted());
    scheduler.runPosted();
    EXPECT_TRUE(app.automationAuthorized());
}

TEST_F(ManualUpdateCheck, IsUnderWayUntilTheAnswer) {
    AppState& app = start();
    scheduler.runPosted();
    network.answer(0, std::nullopt);
    app.checkForUpdatesNow();
    app.checkForUpdatesNow();
    scheduler.runPosted();
    EXPECT_TRUE(app.isCheckingForUpdates());
    ASSERT_EQ(network.requests.size(), 2U) << "one at a time";
    network.answer(1, R"({"version": "9.0"})");
    EXPECT_FALSE(app.isCheckingForUpdates());
    EXPECT_EQ(app.latestVersion(), u"9.0"_s);
}

TEST_F(ManualUpdateCheck, AFailureEndsItInSilence) {
    AppState& app = start();
    scheduler.runPosted();
    app.checkForUpdatesNow();
    scheduler.runPosted();
    network.answer(1, std::nullopt);
    EXPECT_FALSE(app.isCheckingForUpdates());
    EXPECT_FALSE(app.showError());
}

TEST_F(ManualUpdateCheck, TheProgramMayEndMeanwhile) {
    start().checkForUpdatesNow();
    scheduler.runPosted();
    endProgram();
    network.answer(1, std::nullopt);
    EXPECT_EQ(network.requests.size(), 2U);
}
