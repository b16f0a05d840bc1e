#include "AudioServiceFixture.h"

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class AudioServiceMonitoring : public AudioServiceFixture {
protected:
    AudioServiceMonitoring() { static_cast<void>(log.take()); }
};

} // namespace

TEST_F(AudioServiceMonitoring, ItStartsWithoutPreparing) {
    service->startMonitoring();
    EXPECT_THAT(host.calls, ElementsAre("inputFormat", "installTap", "start"));
    EXPECT_THAT(log.take(), ElementsAre(info(u"Mic monitoring started"_s)));
    EXPECT_FALSE(service->isRecording());
}

TEST_F(AudioServiceMonitoring, ItDoesNotStartDuringARecordingOrTwiceOrWithoutPermission) {
    service->setPermissionGranted(false);
    service->startMonitoring();
    EXPECT_EQ(host.enginesMade, 0);
    service->setPermissionGranted(true);
    service->startRecording();
    service->startMonitoring();
    EXPECT_EQ(host.enginesMade, 1);
    static_cast<void>(service->stopRecording());
    service->startMonitoring();
    service->startMonitoring();
    EXPECT_EQ(host.enginesMade, 2);
}

TEST_F(AudioServiceMonitoring, AnUnusableFormatEndsItSilently) {
    host.inputFormat = {0.0, 2};
    service->startMonitoring();
    EXPECT_THAT(host.engines, IsEmpty());
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(AudioServiceMonitoring, AnEngineThatDoesNotStartIsLogged) {
    host.startFailure = "connection refused";
    service->startMonitoring();
    EXPECT_THAT(host.engines, IsEmpty());
    EXPECT_THAT(log.take(),
                ElementsAre(error(u"Failed to start mic monitoring: connection refused"_s)));
    host.startFailure.reset();
    service->startMonitoring();
    EXPECT_EQ(host.engines.size(), 1U);
}

TEST_F(AudioServiceMonitoring, TheLevelKeepsSevenTenthsOfTheOldValue) {
    service->setNoiseGate(0.9); // has no say here, nor has the factor of a recording
    service->startMonitoring();
    hear({0.5F, -0.5F});
    EXPECT_DOUBLE_EQ(service->audioLevel(), 0.15);
    hear({0.5F, -0.5F});
    EXPECT_DOUBLE_EQ(service->audioLevel(), 0.7 * 0.15 + 0.15);
    hear({});
    EXPECT_DOUBLE_EQ(service->audioLevel(), 0.7 * 0.15 + 0.15); // a buffer without frames
}

TEST_F(AudioServiceMonitoring, ItReadsTheFirstChannelWithoutConversion) {
    host.inputFormat = {48000.0, 2};
    service->startMonitoring();
    EXPECT_THAT(host.convertersMade, IsEmpty());
    EXPECT_EQ(engine().tapFrameCount, 1023U);
    hear({0.5F, 9.0F, -0.5F, 9.0F});
    EXPECT_DOUBLE_EQ(service->audioLevel(), 0.15);
}

TEST_F(AudioServiceMonitoring, ItKeepsTheGainOfItsStart) {
    service->setInputGain(20);
    service->startMonitoring();
    service->setInputGain(0);
    hear({0.125F});
    EXPECT_DOUBLE_EQ(service->audioLevel(), 0.375);
}

TEST_F(AudioServiceMonitoring, ThePublishedLevelIsLimited) {
    service->setInputGain(20);
    service->startMonitoring();
    hear({1.0F});
    EXPECT_EQ(service->audioLevel(), 1.0); // the smoother is at 3
    hear({0.0F});
    EXPECT_EQ(service->audioLevel(), 1.0);
}

TEST_F(AudioServiceMonitoring, ItLeavesTheSpectrumAndTheTakeAlone) {
    service->startMonitoring();
    hear(std::vector<float>(1024, 0.5F));
    EXPECT_EQ(service->fftBands(), AudioService::Bands{});
    service->startRecording();
    EXPECT_THAT(service->stopRecording(), IsEmpty());
}

TEST_F(AudioServiceMonitoring, StopClearsTheLevel) {
    service->startMonitoring();
    hear({0.5F});
    host.calls.clear();
    service->stopMonitoring();
    EXPECT_THAT(host.calls, ElementsAre("removeTap", "stop"));
    EXPECT_THAT(host.engines, IsEmpty());
    EXPECT_EQ(service->audioLevel(), 0.0);
}

TEST_F(AudioServiceMonitoring, StopDuringARecordingLeavesItsLevel) {
    service->startMonitoring();
    service->startRecording();
    hear({0.5F});
    service->stopMonitoring();
    EXPECT_EQ(host.engines.size(), 1U);
    EXPECT_EQ(service->audioLevel(), 0.375);
}

TEST_F(AudioServiceMonitoring, StopWithoutAMonitorOnlyClearsTheLevel) {
    service->startRecording();
    engine().feed({0.5F});
    static_cast<void>(service->stopRecording());
    scheduler.runPosted(); // leaves a last value
    ASSERT_EQ(service->audioLevel(), 0.375);
    service->stopMonitoring();
    EXPECT_EQ(service->audioLevel(), 0.0);
}

TEST_F(AudioServiceMonitoring, ALostDeviceEndsIt) {
    service->startMonitoring();
    hear({0.5F});
    static_cast<void>(log.take());
    engine().interrupt("the device was removed");
    scheduler.runPosted();
    EXPECT_EQ(service->audioLevel(), 0.0);
    EXPECT_THAT(host.engines, IsEmpty());
    EXPECT_THAT(log.take(),
                ElementsAre(error(u"Audio capture interrupted: the device was removed"_s)));
    service->startMonitoring();
    EXPECT_EQ(host.engines.size(), 1U);
}

TEST_F(AudioServiceMonitoring, AServiceThatIsGoneGetsNoUpdate) {
    service->startMonitoring();
    int changes = 0;
    QObject::connect(service.get(), &AudioService::audioLevelChanged, [&] { ++changes; });
    engine().feed({0.5F});
    service.reset();
    scheduler.runPosted();
    EXPECT_EQ(changes, 0);
}
