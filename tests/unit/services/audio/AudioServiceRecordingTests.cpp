#include "AudioServiceFixture.h"

#include <optional>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class AudioServiceRecording : public AudioServiceFixture {
protected:
    AudioServiceRecording() { static_cast<void>(log.take()); }

    /// What startRecording throws; absent when it doesn't.
    std::optional<AudioError> startFailure() {
        try {
            service->startRecording();
        } catch (const AudioError& thrown) {
            return thrown;
        }
        return std::nullopt;
    }
    void expectFailure(AudioError::Case expected, const char* message) {
        const auto thrown = startFailure();
        ASSERT_TRUE(thrown);
        EXPECT_EQ(thrown->errorCase(), expected);
        EXPECT_STREQ(thrown->what(), message);
    }
    void expectIdleAndStartable() {
        EXPECT_FALSE(service->isRecording());
        EXPECT_THAT(host.engines, IsEmpty());
        host.startFailure.reset();
        host.inputFormat = {16000.0, 1};
        service->setPermissionGranted(true);
        EXPECT_FALSE(startFailure());
        EXPECT_TRUE(service->isRecording());
    }
};

} // namespace

TEST(AudioError, EveryCaseHasItsMessage) {
    using Case = AudioError::Case;
    EXPECT_STREQ(AudioError(Case::engineStartFailed, "no server").what(),
                 "Failed to start audio engine: no server");
    EXPECT_STREQ(AudioError(Case::deviceNotFound, "42").what(), "Audio device not found: 42");
    EXPECT_STREQ(AudioError(Case::permissionDenied).what(),
                 "Microphone permission denied. Please grant access in System Settings > Privacy & "
                 "Security > Microphone.");
    EXPECT_STREQ(AudioError(Case::noInputDevice).what(),
                 "No microphone found. Please connect a microphone and try again.");
    EXPECT_STREQ(AudioError(Case::formatConversionFailed).what(),
                 "Failed to configure audio format conversion.");
    EXPECT_STREQ(AudioError(Case::alreadyRecording).what(), "Recording is already in progress.");
}

TEST_F(AudioServiceRecording, PermissionIsTheHostsAnswerAtConstruction) {
    EXPECT_TRUE(service->permissionGranted());
    for (const auto status :
         {MicrophoneAuthorization::notDetermined, MicrophoneAuthorization::restricted,
          MicrophoneAuthorization::denied}) {
        host.authorization = status;
        EXPECT_FALSE(AudioService(host, scheduler).permissionGranted());
    }
    EXPECT_THAT(log.take(), ElementsAre(info(u"AudioService initialized, permission status: 0"_s),
                                        info(u"AudioService initialized, permission status: 1"_s),
                                        info(u"AudioService initialized, permission status: 2"_s)));
    host.authorization = MicrophoneAuthorization::authorized;
    const AudioService authorized(host, scheduler);
    EXPECT_THAT(log.take(), ElementsAre(info(u"AudioService initialized, permission status: 3"_s)));
}

TEST_F(AudioServiceRecording, ThePermissionCanBeSetLater) {
    int changes = 0;
    QObject::connect(service.get(), &AudioService::permissionGrantedChanged, [&] { ++changes; });
    service->setPermissionGranted(true);
    EXPECT_EQ(changes, 0);
    service->setPermissionGranted(false);
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(service->permissionGranted());
}

TEST_F(AudioServiceRecording, TheEngineIsSetUpInOrder) {
    host.deviceList = {{7, "Desk microphone", 2}};
    host.inputFormat = {48000.0, 2};
    service->selectDevice(u"7"_s);
    static_cast<void>(log.take());
    service->startRecording();
    EXPECT_THAT(host.calls,
                ElementsAre("setDevice 7", "inputFormat", "installTap", "prepare", "start"));
    EXPECT_THAT(log.take(),
                ElementsAre(info(u"Starting recording..."_s), info(u"Audio device set to 7"_s),
                            info(u"Hardware format: 48000.000000Hz, 2ch, 1"_s),
                            info(u"Audio converter created: 48000.000000Hz → 16000.000000Hz"_s),
                            info(u"Recording started successfully"_s)));
    EXPECT_EQ(engine().tapFrameCount, 1023U);
}

TEST_F(AudioServiceRecording, SixteenKilohertzMonoNeedsNoConverter) {
    service->startRecording();
    EXPECT_THAT(host.convertersMade, IsEmpty());
    EXPECT_THAT(log.take(), ElementsAre(info(u"Starting recording..."_s),
                                        info(u"Hardware format: 16000.000000Hz, 1ch, 1"_s),
                                        info(u"No format conversion needed"_s),
                                        info(u"Recording started successfully"_s)));
    EXPECT_EQ(engine().tapFrameCount, 1024U);
}

TEST_F(AudioServiceRecording, SixteenKilohertzStereoGetsAConverter) {
    host.inputFormat = {16000.0, 2};
    service->startRecording();
    EXPECT_THAT(host.convertersMade,
                ElementsAre(std::pair(AudioFormat{16000.0, 2}, AudioFormat{16000.0, 1})));
    engine().feed({0.5F, 0.25F, -1.0F, 0.0F});
    EXPECT_THAT(service->stopRecording(), ElementsAre(0.375F, -0.5F));
}

TEST_F(AudioServiceRecording, TheTakeIsTheInputSampleForSample) {
    service->startRecording();
    engine().feed({0.5F, -3.0F, 1.5F});
    engine().feed({0.0F, 1e-9F});
    EXPECT_THAT(service->stopRecording(), ElementsAre(0.5F, -3.0F, 1.5F, 0.0F, 1e-9F));
}

TEST_F(AudioServiceRecording, AGainOfZeroDecibelsLeavesTheSamplesAlone) {
    service->setInputGain(0);
    EXPECT_THAT(log.take(),
                ElementsAre(info(u"Input gain set to 0.000000 dB (multiplier: 1.000000)"_s)));
    service->startRecording();
    engine().feed({1.5F, -1.5F});
    EXPECT_THAT(service->stopRecording(), ElementsAre(1.5F, -1.5F));
}

TEST_F(AudioServiceRecording, GainIsAppliedFromTheNextBufferOn) {
    service->startRecording();
    engine().feed({0.75F});
    service->setInputGain(20 * std::log10(2.0));
    engine().feed({0.75F, -0.75F, 0.25F});
    service->setInputGain(-20);
    engine().feed({1.0F});
    EXPECT_THAT(service->stopRecording(), ElementsAre(0.75F, 1.0F, -1.0F, 0.5F, 0.1F));
}

TEST_F(AudioServiceRecording, AClosedGateKeepsTheQuietSamples) {
    service->setNoiseGate(0.5);
    EXPECT_THAT(log.take(), ElementsAre(info(u"Noise gate threshold set to 0.500000"_s)));
    service->startRecording();
    hear({0.25F, -0.25F});
    EXPECT_EQ(service->audioLevel(), 0.0);
    EXPECT_THAT(service->stopRecording(), ElementsAre(0.25F, -0.25F));
}

TEST_F(AudioServiceRecording, ASecondStartLeavesTheRunningTakeAlone) {
    service->startRecording();
    engine().feed({0.5F, 0.5F});
    static_cast<void>(log.take());
    expectFailure(AudioError::Case::alreadyRecording, "Recording is already in progress.");
    EXPECT_THAT(log.take(), ElementsAre(error(u"startRecording called while already recording"_s)));
    EXPECT_EQ(host.enginesMade, 1);
    // The buffer's meter update, posted before, still belongs to the present recording.
    scheduler.runPosted();
    EXPECT_EQ(service->audioLevel(), 0.375);
    engine().feed({0.25F});
    EXPECT_THAT(service->stopRecording(), ElementsAre(0.5F, 0.5F, 0.25F));
}

TEST_F(AudioServiceRecording, WithoutPermissionNothingStarts) {
    service->setPermissionGranted(false);
    expectFailure(
        AudioError::Case::permissionDenied,
        "Microphone permission denied. Please grant access in System Settings > Privacy & "
        "Security > Microphone.");
    EXPECT_THAT(log.take(),
                ElementsAre(error(u"Cannot start recording: microphone permission not granted"_s)));
    EXPECT_EQ(host.enginesMade, 0);
    expectIdleAndStartable();
}

TEST_F(AudioServiceRecording, WithoutAnInputDeviceNothingStarts) {
    for (const AudioFormat format :
         {AudioFormat{0, 1}, AudioFormat{48000, 0}, AudioFormat{-1, 1}}) {
        host.inputFormat = format;
        expectFailure(AudioError::Case::noInputDevice,
                      "No microphone found. Please connect a microphone and try again.");
        EXPECT_EQ(log.take().back(),
                  error(u"Invalid hardware format — no input device available"_s));
    }
    expectIdleAndStartable();
}

TEST_F(AudioServiceRecording, WithoutAConverterNothingStarts) {
    host.inputFormat = {48000.0, 2};
    host.converterFactory = [](const auto&, const auto&) { return nullptr; };
    expectFailure(AudioError::Case::formatConversionFailed,
                  "Failed to configure audio format conversion.");
    EXPECT_EQ(log.take().back(), error(u"Failed to create AVAudioConverter"_s));
    expectIdleAndStartable();
}

TEST_F(AudioServiceRecording, AnEngineThatDoesNotStartLosesItsTap) {
    host.startFailure = "connection refused";
    expectFailure(AudioError::Case::engineStartFailed,
                  "Failed to start audio engine: connection refused");
    EXPECT_EQ(log.take().back(), error(u"Failed to start audio engine: connection refused"_s));
    EXPECT_THAT(host.calls,
                ElementsAre("inputFormat", "installTap", "prepare", "start", "removeTap"));
    expectIdleAndStartable();
}

TEST_F(AudioServiceRecording, StopReleasesTheEngineAndTellsTheLength) {
    service->startRecording();
    engine().feed(std::vector<float>(24'000, 0.25F));
    host.calls.clear();
    static_cast<void>(log.take());
    EXPECT_EQ(service->stopRecording().size(), 24'000U);
    EXPECT_THAT(host.calls, ElementsAre("removeTap", "stop"));
    EXPECT_THAT(host.engines, IsEmpty());
    EXPECT_FALSE(service->isRecording());
    EXPECT_THAT(log.take(),
                ElementsAre(info(u"Stopping recording..."_s), info(u"Audio engine cleaned up"_s),
                            info(u"Recording stopped: 24000 samples (1.5s)"_s)));
}

TEST_F(AudioServiceRecording, StopInTheIdleStateIsEmptyAndPublishesNothing) {
    int changes = 0;
    for (const auto signal : {&AudioService::isRecordingChanged, &AudioService::audioLevelChanged,
                              &AudioService::fftBandsChanged}) {
        QObject::connect(service.get(), signal, [&changes] { ++changes; });
    }
    EXPECT_THAT(service->stopRecording(), IsEmpty());
    EXPECT_EQ(changes, 0);
    EXPECT_THAT(log.take(), ElementsAre(error(u"stopRecording called while not recording"_s)));
}

TEST_F(AudioServiceRecording, EveryRecordingHasAFreshEngineAndAnEmptyTake) {
    service->startRecording();
    engine().feed({0.5F});
    EXPECT_THAT(service->stopRecording(), ElementsAre(0.5F));
    service->startRecording();
    engine().feed({0.25F});
    EXPECT_THAT(service->stopRecording(), ElementsAre(0.25F));
    EXPECT_EQ(host.enginesMade, 2);
}

TEST_F(AudioServiceRecording, AStartClearsWhatAnEarlierTakeLeftBehind) {
    service->prependSamples(std::vector{0.5F});
    service->startRecording();
    EXPECT_THAT(service->stopRecording(), IsEmpty());
}

TEST_F(AudioServiceRecording, SamplesFromBeforeGoInFrontOfTheTake) {
    service->startRecording();
    engine().feed({0.5F, 0.25F});
    static_cast<void>(log.take());
    service->prependSamples(std::vector{-0.5F, -0.25F, 2.0F});
    EXPECT_THAT(log.take(), ElementsAre(info(u"Prepended 3 lookback samples"_s)));
    engine().feed({0.75F});
    EXPECT_THAT(service->stopRecording(), ElementsAre(-0.5F, -0.25F, 2.0F, 0.5F, 0.25F, 0.75F));
}

TEST_F(AudioServiceRecording, ABufferTooShortForOneSampleIsDropped) {
    host.inputFormat = {48000.0, 1};
    service->startRecording();
    hear({0.25F, 0.25F});
    EXPECT_EQ(service->audioLevel(), 0.0);
    hear({0.5F, 0.5F, 0.5F});
    EXPECT_EQ(service->audioLevel(), 0.375);
    EXPECT_THAT(service->stopRecording(), ElementsAre(0.5F));
}

TEST_F(AudioServiceRecording, AFailedConversionLosesOnlyItsBuffer) {
    host.inputFormat = {48000.0, 1};
    service->startRecording();
    static_cast<void>(log.take());
    hear({0.5F, 0.5F, 0.5F});
    host.conversionFailure = "out of order";
    engine().feed({0.25F, 0.25F, 0.25F});
    EXPECT_THAT(log.take(), IsEmpty()); // the main thread logs, not the tap
    scheduler.runPosted();
    EXPECT_THAT(log.take(), ElementsAre(error(u"Audio conversion error: out of order"_s)));
    host.conversionFailure.reset();
    hear({0.75F, 0.75F, 0.75F});
    EXPECT_TRUE(service->isRecording());
    EXPECT_THAT(service->stopRecording(), ElementsAre(0.5F, 0.75F));
}

TEST_F(AudioServiceRecording, ATakeSurvivesTheLossOfItsDevice) {
    service->startRecording();
    hear(std::vector<float>(1024, 0.5F));
    engine().feed(std::vector<float>(1024, 0.5F)); // its meter update is still waiting
    static_cast<void>(log.take());
    engine().interrupt("the device was removed");
    EXPECT_THAT(log.take(),
                ElementsAre(error(u"Audio capture interrupted: the device was removed"_s)));
    scheduler.runPosted();
    EXPECT_TRUE(service->isRecording());
    EXPECT_EQ(service->audioLevel(), 0.0);
    EXPECT_EQ(service->fftBands(), AudioService::Bands{});
    EXPECT_EQ(service->stopRecording(), std::vector<float>(2048, 0.5F));
    EXPECT_FALSE(service->isRecording());
    EXPECT_THAT(host.engines, IsEmpty());
}

TEST_F(AudioServiceRecording, AfterALostDeviceTheSmootherBeginsAtZero) {
    service->startRecording();
    hear(std::vector<float>(1024, 0.5F));
    engine().interrupt("the sound server is gone");
    scheduler.runPosted();
    static_cast<void>(service->stopRecording());
    service->startMonitoring();
    hear({1.0F});
    EXPECT_DOUBLE_EQ(service->audioLevel(), 0.3);
}

TEST_F(AudioServiceRecording, DestructionReleasesEveryEngineThatRuns) {
    service->startMonitoring();
    service->startKeepWarm();
    service->startRecording();
    engine().feed({0.5F});
    engine().interrupt("late");
    ASSERT_EQ(host.engines.size(), 3U);
    host.calls.clear();
    service.reset();
    EXPECT_THAT(host.engines, IsEmpty());
    // The interrupted one doesn't run any more.
    EXPECT_THAT(host.calls, ElementsAre("removeTap", "removeTap", "stop", "removeTap", "stop"));
    scheduler.runPosted(); // what is still waiting finds nobody
}
