#include "AudioServiceFixture.h"

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class AudioServiceKeepWarm : public AudioServiceFixture {
protected:
    AudioServiceKeepWarm() { static_cast<void>(log.take()); }
};

} // namespace

TEST_F(AudioServiceKeepWarm, WithoutPermissionItLogsAndStaysOff) {
    service->setPermissionGranted(false);
    service->startKeepWarm();
    EXPECT_FALSE(service->isKeepWarmRunning());
    EXPECT_EQ(host.enginesMade, 0);
    EXPECT_THAT(log.take(),
                ElementsAre(error(u"Cannot start keep-warm: mic permission not granted"_s)));
}

TEST_F(AudioServiceKeepWarm, ItRunsBetweenStartAndStop) {
    int changes = 0;
    QObject::connect(service.get(), &AudioService::isKeepWarmRunningChanged, [&] { ++changes; });
    service->startKeepWarm();
    EXPECT_TRUE(service->isKeepWarmRunning());
    EXPECT_EQ(changes, 1);
    EXPECT_THAT(host.calls, ElementsAre("inputFormat", "installTap", "prepare", "start"));
    EXPECT_THAT(log.take(), ElementsAre(info(u"Keep-warm started (ring buffer: 3s lookback)"_s)));
    host.calls.clear();
    service->stopKeepWarm();
    EXPECT_FALSE(service->isKeepWarmRunning());
    EXPECT_EQ(changes, 2);
    EXPECT_THAT(host.calls, ElementsAre("removeTap", "stop"));
    EXPECT_THAT(host.engines, IsEmpty());
    EXPECT_THAT(log.take(), ElementsAre(info(u"Keep-warm stopped"_s)));
}

TEST_F(AudioServiceKeepWarm, StartingAndStoppingTwiceIsHarmless) {
    service->stopKeepWarm();
    EXPECT_THAT(log.take(), IsEmpty());
    service->startKeepWarm();
    engine().feed({0.5F});
    service->startKeepWarm();
    EXPECT_EQ(host.enginesMade, 1);
    EXPECT_THAT(service->drainWarmBuffer(), ElementsAre(0.5F)); // the ring wasn't reset
}

TEST_F(AudioServiceKeepWarm, AnUnusableFormatLeavesItOff) {
    host.inputFormat = {48000.0, 0};
    service->startKeepWarm();
    EXPECT_FALSE(service->isKeepWarmRunning());
    EXPECT_THAT(host.engines, IsEmpty());
    EXPECT_THAT(log.take(), ElementsAre(error(u"Keep-warm: invalid hardware format"_s)));
}

TEST_F(AudioServiceKeepWarm, AnEngineThatDoesNotStartLeavesItOff) {
    host.startFailure = "connection refused";
    service->startKeepWarm();
    EXPECT_FALSE(service->isKeepWarmRunning());
    EXPECT_THAT(host.engines, IsEmpty());
    EXPECT_EQ(host.calls.back(), "removeTap");
    EXPECT_THAT(log.take(),
                ElementsAre(error(u"Failed to start keep-warm engine: connection refused"_s)));
    host.startFailure.reset();
    service->startKeepWarm();
    EXPECT_TRUE(service->isKeepWarmRunning());
}

TEST_F(AudioServiceKeepWarm, NothingHeardDrainsNothing) {
    EXPECT_THAT(service->drainWarmBuffer(), IsEmpty());
    service->startKeepWarm();
    EXPECT_THAT(service->drainWarmBuffer(), IsEmpty());
}

TEST_F(AudioServiceKeepWarm, ItRemembersThreeSeconds) {
    service->startKeepWarm();
    std::vector<float> heard;
    for (int i = 1; i <= 50; ++i) {
        const std::vector<float> buffer(1000, static_cast<float>(i));
        engine().feed(buffer);
        heard.insert(heard.end(), buffer.begin(), buffer.end());
    }
    heard.erase(heard.begin(), heard.begin() + 2000);
    EXPECT_EQ(service->drainWarmBuffer(), heard);
    EXPECT_THAT(service->drainWarmBuffer(), IsEmpty());
}

TEST_F(AudioServiceKeepWarm, NeitherGainNorGateNorMeterTouchTheLookback) {
    int changes = 0;
    for (const auto signal : {&AudioService::audioLevelChanged, &AudioService::fftBandsChanged}) {
        QObject::connect(service.get(), signal, [&changes] { ++changes; });
    }
    service->setInputGain(20);
    service->setNoiseGate(0.9);
    service->startKeepWarm();
    hear({0.5F, -2.0F});
    EXPECT_THAT(service->drainWarmBuffer(), ElementsAre(0.5F, -2.0F));
    EXPECT_EQ(changes, 0);
}

TEST_F(AudioServiceKeepWarm, TheSystemMayTakeItsTime) {
    service->startKeepWarm();
    EXPECT_EQ(engine().latency, 300ms);
    EXPECT_EQ(engine().tapFrameCount, 1024U);
    service->stopKeepWarm();
    service->startRecording();
    EXPECT_EQ(engine().latency, std::nullopt);
}

TEST_F(AudioServiceKeepWarm, OtherFormatsAreConverted) {
    host.inputFormat = {48000.0, 2};
    service->startKeepWarm();
    EXPECT_EQ(engine().tapFrameCount, 1023U);
    engine().feed({0.5F, 0.25F, 9, 9, 9, 9});
    EXPECT_THAT(service->drainWarmBuffer(), ElementsAre(0.375F));
}

TEST_F(AudioServiceKeepWarm, AFailedConversionLosesOnlyItsBuffer) {
    host.inputFormat = {48000.0, 1};
    service->startKeepWarm();
    host.conversionFailure = "out of order";
    hear({0.5F, 0.5F, 0.5F});
    EXPECT_THAT(log.take(), Contains(error(u"Audio conversion error: out of order"_s)));
    host.conversionFailure.reset();
    hear({0.25F, 0.25F, 0.25F});
    EXPECT_THAT(service->drainWarmBuffer(), ElementsAre(0.25F));
}

TEST_F(AudioServiceKeepWarm, WithoutAConverterItCountsAsRunningAndRemembersNothing) {
    host.inputFormat = {48000.0, 2};
    host.converterFactory = [](const auto&, const auto&) { return nullptr; };
    service->startKeepWarm();
    EXPECT_TRUE(service->isKeepWarmRunning());
    hear(std::vector<float>(2046, 0.5F));
    EXPECT_THAT(service->drainWarmBuffer(), IsEmpty());
}

TEST_F(AudioServiceKeepWarm, TheLookbackStaysAfterAStopAndGoesWithTheNextStart) {
    service->startKeepWarm();
    engine().feed({0.5F});
    service->stopKeepWarm();
    EXPECT_THAT(service->drainWarmBuffer(), ElementsAre(0.5F));

    service->startKeepWarm();
    engine().feed({0.25F});
    service->stopKeepWarm();
    service->startKeepWarm();
    EXPECT_THAT(service->drainWarmBuffer(), IsEmpty());
}

TEST_F(AudioServiceKeepWarm, TheOrderAtTheStartOfATakePutsTheLookbackInFrontOnce) {
    service->startKeepWarm();
    engine().feed({0.0F, 0.5F, 0.25F});
    const auto warm = service->drainWarmBuffer();
    engine().feed({0.125F}); // in the gap: lost
    service->stopKeepWarm();
    service->startRecording();
    service->prependSamples(warm);
    engine().feed({0.75F});
    EXPECT_THAT(service->stopRecording(), ElementsAre(0.5F, 0.25F, 0.75F));
    EXPECT_EQ(host.enginesMade, 2);
}

TEST_F(AudioServiceKeepWarm, ALostDeviceEndsItAndKeepsTheLookback) {
    service->startKeepWarm();
    engine().feed({0.5F});
    static_cast<void>(log.take());
    engine().interrupt("the device was removed");
    scheduler.runPosted();
    EXPECT_FALSE(service->isKeepWarmRunning());
    EXPECT_THAT(host.engines, IsEmpty());
    EXPECT_THAT(log.take(),
                ElementsAre(error(u"Audio capture interrupted: the device was removed"_s),
                            info(u"Keep-warm stopped"_s)));
    EXPECT_THAT(service->drainWarmBuffer(), ElementsAre(0.5F));
}

TEST_F(AudioServiceKeepWarm, WhatWasSaidBeforeALostDeviceIsForgottenAfterThreeSeconds) {
    for (const auto& [wait, remembered] : {std::pair(3000ms, 1U), std::pair(3001ms, 0U)}) {
        service->startKeepWarm();
        engine().feed({0.5F});
        engine().interrupt("the device was removed");
        scheduler.advance(wait);
        EXPECT_EQ(service->drainWarmBuffer().size(), remembered);
    }
}

TEST_F(AudioServiceKeepWarm, ALostDeviceOfAnEarlierEngineLeavesTheNextAlone) {
    service->startKeepWarm();
    engine().interrupt("the device was removed");
    service->stopKeepWarm();
    service->startKeepWarm();
    scheduler.runPosted();
    EXPECT_TRUE(service->isKeepWarmRunning());
    EXPECT_EQ(host.engines.size(), 1U);
}

TEST_F(AudioServiceKeepWarm, ALostDeviceLeavesARecordingsMetersAlone) {
    service->startKeepWarm();
    FakeCaptureEngine& warm = engine();
    service->startRecording();
    hear({0.5F});
    warm.interrupt("the device was removed");
    scheduler.runPosted();
    EXPECT_FALSE(service->isKeepWarmRunning());
    EXPECT_TRUE(service->isRecording());
    EXPECT_EQ(service->audioLevel(), 0.375);
}
