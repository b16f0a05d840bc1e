#include "AppStateFixture.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using Startup = AppStateTest;

namespace {

void touch(const QString& path) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
}

} // namespace

TEST_F(Startup, LogsWhatItFinds) {
    bundle.installedVersion = u"1.2.3"_s;
    start();
    scheduler.runPosted();
    EXPECT_EQ(feed(),
              (QStringList{u"Quorvin v1.2.3 starting..."_s, u"History service initialized"_s,
                           u"Audio devices: 1 found"_s, u"Loading Whisper model..."_s,
                           u"Whisper model loaded and ready"_s}));
    EXPECT_EQ(banners(), QStringList{u"Quorvin Ready"_s});
}

TEST_F(Startup, WithoutAVersionShowsAQuestionMark) {
    bundle.installedVersion.reset();
    start();
    EXPECT_EQ(feed().first(), u"Quorvin v? starting..."_s);
}

TEST_F(Startup, ABrokenHistoryIsToldAndTheProgramGoesOn) {
    bundle.applicationSupport = directory.filePath(u"a file"_s);
    touch(*bundle.applicationSupport);
    start();
    ASSERT_FALSE(feed(ActivityType::error).isEmpty());
    EXPECT_TRUE(feed(ActivityType::error)
                    .first()
                    .startsWith(u"History service failed: Failed to create data directory: "_s));
}

TEST_F(Startup, RemovesOrphanedRecordingsAndNothingElse) {
    touch(bundle.temporary + u"/quorvin_A.wav"_s);
    touch(bundle.temporary + u"/quorvin_B.wav"_s);
    touch(bundle.temporary + u"/quorvin_C.txt"_s);
    touch(bundle.temporary + u"/other.wav"_s);
    start();
    EXPECT_EQ(QDir(bundle.temporary).entryList(QDir::Files),
              (QStringList{u"other.wav"_s, u"quorvin_C.txt"_s}));
    EXPECT_TRUE(feed().contains(u"Cleaned up 2 orphaned WAV file(s) from /tmp"_s));
}

TEST_F(Startup, AnOrphanThatCannotBeRemovedCountsAllTheSame) {
    touch(bundle.temporary + u"/quorvin_A.wav"_s);
    // A folder that isn't empty stands for a file that can't be removed.
    ASSERT_TRUE(QDir(bundle.temporary).mkpath(u"quorvin_B.wav/inside"_s));
    start();
    EXPECT_TRUE(feed().contains(u"Cleaned up 2 orphaned WAV file(s) from /tmp"_s));
}

TEST_F(Startup, ForwardsTheStoredSettingsButNotTheDevice) {
    defaults.setString(u"language"_s, u"de"_s);
    defaults.setBoolean(u"translateToEnglish"_s, true);
    defaults.setString(u"selectedDevice"_s, u"42"_s);
    AppState& app = start();
    EXPECT_EQ(app.whisperService().language, u"de"_s);
    EXPECT_TRUE(app.whisperService().translateToEnglish);
    app.startRecording();
    EXPECT_FALSE(selectedDeviceOfTheTake().has_value());
}

TEST_F(Startup, KeepsTheMicrophoneWarmWhenPermitted) {
    EXPECT_TRUE(start().audioService().isKeepWarmRunning());
    audioHost.authorization = MicrophoneAuthorization::denied;
    EXPECT_FALSE(start().audioService().isKeepWarmRunning());
}

TEST_F(Startup, AFirstRunNeedsTheWizardAndALaterOneDoesNot) {
    EXPECT_TRUE(start().needsOnboarding());
    defaults.setBoolean(u"onboardingComplete"_s, true);
    EXPECT_FALSE(start().needsOnboarding());
}

TEST_F(Startup, ResettingBringsTheWizardBackAtOnce) {
    defaults.setBoolean(u"onboardingComplete"_s, true);
    start().resetOnboarding();
    EXPECT_TRUE(app().needsOnboarding());
    EXPECT_EQ(defaults.boolean(u"onboardingComplete"_s), false);
}

TEST_F(Startup, ARevokedPermissionIsToldOnceWithFeedbackAndSettings) {
    AppState& app = start();
    scheduler.runPosted();
    ASSERT_TRUE(app.accessibilityAuthorized());
    keyEvents.trusted = false;
    scheduler.advance(29s);
    EXPECT_TRUE(app.accessibilityAuthorized());
    scheduler.advance(1s);
    EXPECT_FALSE(app.accessibilityAuthorized());
    EXPECT_EQ(app.compactFeedback(), u"⚠ re-grant Accessibility"_s);
    scheduler.advance(5s);
    EXPECT_EQ(app.compactFeedback(), QString());
    scheduler.advance(120s);
    EXPECT_EQ(feed(ActivityType::error),
              QStringList{u"Accessibility revoked — re-grant in System Settings"_s});
    EXPECT_EQ(workspace.openedURLs,
              std::vector{u"x-apple.systempreferences:com.apple.preference.security?"
                          u"Privacy_Accessibility"_s});
}

TEST_F(Startup, AGrantedPermissionIsToldOnce) {
    keyEvents.trusted = false;
    AppState& app = start();
    scheduler.runPosted();
    EXPECT_FALSE(app.accessibilityAuthorized());
    keyEvents.trusted = true;
    scheduler.advance(120s);
    EXPECT_TRUE(app.accessibilityAuthorized());
    EXPECT_TRUE(app.agentService().accessibilityGranted());
    EXPECT_EQ(feed(ActivityType::success).last(),
              u"Accessibility permission granted ✓ — ready to send"_s);
    EXPECT_EQ(feed(ActivityType::success).size(), 3);
}

TEST_F(Startup, TheAutomationPermissionIsAskedInATask) {
    AppState& app = start();
    EXPECT_FALSE(app.automationAuthorized());
    scheduler.runPosted();
    EXPECT_TRUE(app.automationAuthorized());
}
