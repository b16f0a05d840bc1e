#include "AppStateFixture.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using Dictation = AppStateTest;

namespace {

RunningApplication application(ProcessID pid, const QString& bundleIdentifier) {
    return {pid, u"App %1"_s.arg(pid), bundleIdentifier};
}

} // namespace

TEST_F(Dictation, AWholeTakeEndsAsDraftAndHistoryRow) {
    AppState& app = start();
    dictate(u"run the tests"_s);
    EXPECT_EQ(app.draftText(), u"run the tests"_s);
    EXPECT_EQ(app.state(), AppState::AppMode::ready);
    ASSERT_EQ(history().size(), 1);
    EXPECT_EQ(history().first().text, u"run the tests"_s);
    EXPECT_EQ(history().first().language, u"en"_s);
    EXPECT_NEAR(history().first().duration, 1.0, 0.05);
    EXPECT_EQ(history().first().sentTo, QString());
    EXPECT_TRUE(feed().contains(u"Transcribed: run the tests (13 chars)"_s));
}

TEST_F(Dictation, StatesFollowTheTake) {
    AppState& app = start();
    holdEngine();
    app.startRecording();
    EXPECT_EQ(app.state(), AppState::AppMode::recording);
    EXPECT_TRUE(app.isRecording());
    speak();
    app.stopRecording();
    EXPECT_EQ(app.state(), AppState::AppMode::transcribing);
    EXPECT_FALSE(app.isRecording());
    EXPECT_TRUE(app.isTranscribing());
    scheduler.runPosted();
    EXPECT_TRUE(app.isTranscribing());
    answerEngine(u"done"_s);
    EXPECT_FALSE(app.isTranscribing());
    EXPECT_EQ(app.state(), AppState::AppMode::ready);
}

TEST_F(Dictation, BannersFollowTheTake) {
    start();
    scheduler.runPosted();
    notifications.requests.clear();
    dictate(u"hello there"_s);
    EXPECT_EQ(banners(), (QStringList{u"Recording Started"_s, u"Recording Stopped"_s,
                                      u"Transcription Complete"_s}));
}

TEST_F(Dictation, StartingTwiceGivesOneTakeOneTickAndOneLogLine) {
    AppState& app = start();
    app.startRecording();
    app.startRecording();
    EXPECT_EQ(feed(ActivityType::recording), QStringList{u"Recording started"_s});
    scheduler.advance(330ms);
    EXPECT_NEAR(app.recordingDuration(), 0.33, 1e-9);
}

TEST_F(Dictation, TwoStartsWithAnUndeterminedPermissionGiveOneRequest) {
    audioHost.authorization = MicrophoneAuthorization::notDetermined;
    AppState& app = start();
    app.startRecording();
    app.startRecording();
    scheduler.runPosted();
    EXPECT_EQ(audioHost.accessRequests, 1);
    audioHost.accessAnswer.resolve(false); // else its task would never end
}

TEST_F(Dictation, AGrantedRequestStartsTheTake) {
    audioHost.authorization = MicrophoneAuthorization::notDetermined;
    AppState& app = start();
    app.startRecording();
    scheduler.runPosted();
    EXPECT_FALSE(app.isRecording());
    audioHost.accessAnswer.resolve(true);
    EXPECT_TRUE(app.isRecording());
    EXPECT_TRUE(app.microphoneAuthorized());
    EXPECT_TRUE(app.audioService().permissionGranted());
}

TEST_F(Dictation, ARefusedRequestShowsNothingAndCanBeRepeated) {
    audioHost.authorization = MicrophoneAuthorization::notDetermined;
    AppState& app = start();
    scheduler.runPosted();
    notifications.requests.clear();
    app.startRecording();
    scheduler.runPosted();
    audioHost.accessAnswer.resolve(false);
    EXPECT_FALSE(app.isRecording());
    EXPECT_FALSE(app.microphoneAuthorized());
    EXPECT_TRUE(banners().isEmpty());
    app.startRecording();
    scheduler.runPosted();
    EXPECT_EQ(audioHost.accessRequests, 2);
}

TEST_F(Dictation, ADeniedMicrophoneGivesTheBannerAndTheSettingsPage) {
    audioHost.authorization = MicrophoneAuthorization::denied;
    AppState& app = start();
    scheduler.runPosted();
    notifications.requests.clear();
    app.startRecording();
    EXPECT_FALSE(app.isRecording());
    EXPECT_EQ(app.state(), AppState::AppMode::idle);
    ASSERT_EQ(notifications.requests.size(), 1U);
    const NotificationRequest& banner = notifications.requests.front();
    EXPECT_EQ(banner.identifier, u"quorvin-error"_s);
    EXPECT_EQ(banner.title, u"Microphone Access Required"_s);
    EXPECT_EQ(banner.body, u"Please grant microphone access in System Settings → Privacy & "
                           u"Security → Microphone"_s);
    EXPECT_EQ(banner.category, u"transfer.error"_s);
    EXPECT_EQ(banner.sound, NotificationSound::critical);
    EXPECT_EQ(workspace.openedURLs,
              std::vector{u"x-apple.systempreferences:com.apple.preference.security?"
                          u"Privacy_Microphone"_s});
}

TEST_F(Dictation, ACaptureThatFailsToStartLeavesIdleAndTheTextOfTheError) {
    AppState& app = start();
    scheduler.runPosted();
    notifications.requests.clear();
    audioHost.inputFormat = {0, 0};
    app.startRecording();
    EXPECT_FALSE(app.isRecording());
    EXPECT_EQ(app.state(), AppState::AppMode::idle);
    ASSERT_EQ(notifications.requests.size(), 1U);
    EXPECT_EQ(notifications.requests.front().title, u"Recording Failed"_s);
    EXPECT_EQ(notifications.requests.front().body,
              u"No microphone found. Please connect a microphone and try again."_s);
    EXPECT_EQ(feed(ActivityType::recording), QStringList{u"Recording started"_s});
    EXPECT_TRUE(feed(ActivityType::error).isEmpty());
}

TEST_F(Dictation, TheApplicationInFrontIsTheTarget) {
    workspace.frontmost = application(501, u"org.example.editor"_s);
    AppState& app = start();
    app.startRecording();
    EXPECT_EQ(app.lastFocusedAppPID(), 501);
}

TEST_F(Dictation, WithThisProgramInFrontTheStoredTargetStays) {
    workspace.frontmost = application(501, u"org.example.editor"_s);
    AppState& app = start();
    app.startRecording();
    app.cancelRecording();
    workspace.frontmost = application(bundle.pid, u"com.quorvin"_s);
    workspace.running = {application(77, u"com.apple.Terminal"_s)};
    app.startRecording();
    EXPECT_EQ(app.lastFocusedAppPID(), 501);
}

TEST_F(Dictation, WithNothingStoredTheFirstTerminalOfTheTableIsTheTarget) {
    workspace.frontmost = application(bundle.pid, u"com.quorvin"_s);
    workspace.running = {application(9, u"net.kovidgoyal.kitty"_s),
                         application(8, u"com.apple.Terminal"_s),
                         application(7, u"com.apple.Terminal"_s)};
    AppState& app = start();
    app.startRecording();
    EXPECT_EQ(app.lastFocusedAppPID(), 8);
}

TEST_F(Dictation, WithNothingStoredAndNoTerminalTheTakeGoesOn) {
    workspace.frontmost = application(bundle.pid, u"com.quorvin"_s);
    AppState& app = start();
    app.startRecording();
    EXPECT_FALSE(app.lastFocusedAppPID().has_value());
    EXPECT_TRUE(app.isRecording());
}

TEST_F(Dictation, SilenceFromTheStartStopsTheTakeAfterGraceAndTimeout) {
    defaults.setInteger(u"silenceTimeout"_s, 1);
    AppState& app = start();
    app.startRecording();
    scheduler.advance(2500ms);
    EXPECT_TRUE(app.isRecording());
    scheduler.advance(66ms);
    EXPECT_FALSE(app.isRecording());
    EXPECT_TRUE(feed(ActivityType::recording).contains(u"VAD auto-stop: 1s silence"_s));
    EXPECT_NEAR(app.recordingDuration(), 2.5, 0.07);
}

TEST_F(Dictation, WithoutAutoStopNoSilenceStopsTheTake) {
    defaults.setBoolean(u"vadAutoStop"_s, false);
    defaults.setInteger(u"silenceTimeout"_s, 1);
    AppState& app = start();
    app.startRecording();
    scheduler.advance(600s);
    EXPECT_TRUE(app.isRecording());
}

TEST_F(Dictation, OneLoudReadingStartsTheCountAgain) {
    defaults.setInteger(u"silenceTimeout"_s, 2);
    AppState& app = start();
    app.startRecording();
    scheduler.advance(3300ms);
    setLevel(0.5);
    scheduler.advance(33ms);
    setLevel(0.0);
    scheduler.advance(1900ms);
    EXPECT_TRUE(app.isRecording());
    scheduler.advance(200ms);
    EXPECT_FALSE(app.isRecording());
}

TEST_F(Dictation, LongTextsAreCutInTheLogAfterSixtyCharacters) {
    start();
    const QString sixty(60, u'a');
    dictate(sixty);
    EXPECT_TRUE(feed().contains(u"Transcribed: "_s + sixty + u" (60 chars)"_s));
    const QString sixtyOne(61, u'b');
    dictate(sixtyOne);
    EXPECT_TRUE(feed().contains(u"Transcribed: "_s + QString(60, u'b') + u"... (61 chars)"_s));
}

TEST_F(Dictation, AHallucinationLeavesNothing) {
    AppState& app = start();
    dictate(u"  THANK YOU. "_s);
    EXPECT_EQ(app.draftText(), QString());
    EXPECT_TRUE(history().isEmpty());
    EXPECT_EQ(app.state(), AppState::AppMode::ready);
    dictate(u"Thank you for the review."_s);
    EXPECT_EQ(app.draftText(), u"Thank you for the review."_s);
}

TEST_F(Dictation, AppendModeJoinsWithABlank) {
    AppState& app = start();
    dictate(u"def"_s);
    EXPECT_EQ(app.draftText(), u"def"_s);
    app.setDraftText(u"abc"_s);
    dictate(u"def"_s);
    EXPECT_EQ(app.draftText(), u"abc def"_s);
}

TEST_F(Dictation, WithoutAppendModeTheDraftIsReplaced) {
    defaults.setBoolean(u"appendMode"_s, false);
    AppState& app = start();
    app.setDraftText(u"abc"_s);
    dictate(u"def"_s);
    EXPECT_EQ(app.draftText(), u"def"_s);
}

TEST_F(Dictation, CancellingDropsTheTake) {
    AppState& app = start();
    app.startRecording();
    speak();
    app.cancelRecording();
    scheduler.advance(5s);
    EXPECT_EQ(app.state(), AppState::AppMode::ready);
    EXPECT_FALSE(app.isTranscribing());
    EXPECT_EQ(app.draftText(), QString());
    EXPECT_TRUE(feed().contains(u"Recording cancelled — discarded"_s));
    EXPECT_TRUE(app.audioService().isKeepWarmRunning());
}

TEST_F(Dictation, CancellingShowsAFeedbackForOneAndAHalfSeconds) {
    AppState& app = start();
    app.startRecording();
    app.cancelRecording();
    EXPECT_EQ(app.compactFeedback(), u"✕ Cancelled"_s);
    scheduler.advance(1500ms);
    EXPECT_EQ(app.compactFeedback(), QString());
}

TEST_F(Dictation, CancellingWhileTranscribingDoesNothing) {
    AppState& app = start();
    holdEngine();
    app.startRecording();
    speak();
    app.stopRecording();
    scheduler.runPosted();
    app.cancelRecording();
    EXPECT_EQ(app.compactFeedback(), QString());
    EXPECT_TRUE(app.isTranscribing());
    answerEngine(u"still here"_s);
    EXPECT_EQ(app.draftText(), u"still here"_s);
}

TEST_F(Dictation, ATakeDuringATranscriptionGoesOnWhileTheStateReadsReady) {
    AppState& app = start();
    holdEngine();
    app.startRecording();
    speak();
    app.stopRecording();
    scheduler.runPosted();
    app.startRecording();
    EXPECT_TRUE(app.isRecording());
    EXPECT_TRUE(app.isTranscribing());
    answerEngine(u"of the first take"_s);
    EXPECT_EQ(app.draftText(), u"of the first take"_s);
    EXPECT_TRUE(app.isRecording());
    EXPECT_EQ(app.state(), AppState::AppMode::ready);
}

TEST_F(Dictation, StoppingWithoutATakeDoesNothing) {
    AppState& app = start();
    app.stopRecording();
    EXPECT_EQ(app.state(), AppState::AppMode::idle);
    EXPECT_TRUE(feed(ActivityType::recording).isEmpty());
}

TEST_F(Dictation, TheDraftGetsItsTextAlsoWithABrokenHistory) {
    bundle.applicationSupport = directory.filePath(u"a file"_s);
    QFile blocker(*bundle.applicationSupport);
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    AppState& app = start();
    app.loadPreviousPhrase();
    dictate(u"without a history"_s);
    EXPECT_EQ(app.draftText(), u"without a history"_s);
    EXPECT_EQ(app.state(), AppState::AppMode::ready);
}

TEST_F(Dictation, SoundsMarkTheTake) {
    start();
    dictate(u"hello there"_s);
    EXPECT_EQ(soundsPlayed(), (QStringList{u"ui-sound"_s, u"ui-pop"_s, u"vinyl-stop"_s}));
}

TEST_F(Dictation, AFailedStartPopsLouderFromThenOn) {
    AppState& app = start();
    audioHost.inputFormat = {0, 0};
    app.startRecording();
    EXPECT_EQ(soundsPlayed(), QStringList{u"ui-pop"_s});
    EXPECT_EQ(popVolume(), 0.3);
}

TEST_F(Dictation, SwitchedOffSoundsDoNotPlay) {
    defaults.setBoolean(u"soundsEnabled"_s, false);
    start();
    dictate(u"hello there"_s);
    EXPECT_TRUE(soundsPlayed().isEmpty());
}

TEST_F(Dictation, TheLookBackStandsBeforeTheTake) {
    AppState& app = start();
    ASSERT_TRUE(app.audioService().isKeepWarmRunning());
    feedMicrophone(std::vector<float>(1600, 0.25F));
    app.startRecording();
    EXPECT_FALSE(app.audioService().isKeepWarmRunning());
    speak();
    engineSays(u"with its first word"_s);
    app.stopRecording();
    scheduler.runPosted();
    EXPECT_EQ(engineSamples(), 1600U + 16000U);
}

TEST_F(Dictation, ATakeOutlivesTheProgramWithoutEffect) {
    AppState& app = start();
    holdEngine();
    app.startRecording();
    speak();
    app.stopRecording();
    scheduler.runPosted();
    endProgram();
    answerEngine(u"too late"_s);
    EXPECT_TRUE(temporaryWavFiles().isEmpty());
}

TEST_F(Dictation, OneToggleStartsATakeAndTheNextStopsIt) {
    AppState& app = start();
    app.toggleRecording();
    EXPECT_TRUE(app.isRecording());
    app.toggleRecording();
    EXPECT_FALSE(app.isRecording());
}
