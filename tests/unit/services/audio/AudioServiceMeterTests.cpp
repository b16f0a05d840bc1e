#include "AudioServiceFixture.h"
#include "services/audio/Spectrum.h"

#include <cmath>
#include <numbers>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;

namespace {

class AudioServiceMeter : public AudioServiceFixture {
protected:
    static std::vector<float> sine(double frequency, double amplitude) {
        std::vector<float> samples(1024);
        for (std::size_t n = 0; n < samples.size(); ++n) {
            const double phase = 2 * std::numbers::pi * frequency * static_cast<double>(n) / 16000;
            samples[n] = static_cast<float>(amplitude * std::sin(phase));
        }
        return samples;
    }
    /// The first published bands of a recording that hears `samples`.
    AudioService::Bands firstBands(const std::vector<float>& samples) {
        service->startRecording();
        hear(samples);
        const auto bands = service->fftBands();
        static_cast<void>(service->stopRecording());
        return bands;
    }
};

} // namespace

TEST_F(AudioServiceMeter, TheLevelMovesByHalvesTowardOneAndAHalfTimesTheRMS) {
    service->startRecording();
    hear({0.5F, -0.5F});
    EXPECT_EQ(service->audioLevel(), 0.375);
    hear({0.5F, -0.5F});
    EXPECT_EQ(service->audioLevel(), 0.5625);
    hear({0.0F, 0.0F});
    EXPECT_EQ(service->audioLevel(), 0.28125);
}

TEST_F(AudioServiceMeter, OnlyThePublishedLevelIsLimited) {
    service->startRecording();
    hear({1.0F});
    EXPECT_EQ(service->audioLevel(), 0.75);
    hear({1.0F});
    EXPECT_EQ(service->audioLevel(), 1.0); // the smoother is at 1.125
    hear({0.0F});
    EXPECT_EQ(service->audioLevel(), 0.5625);
}

TEST_F(AudioServiceMeter, ABufferChangesNothingUntilTheMainThreadSeesIt) {
    int changes = 0;
    QObject::connect(service.get(), &AudioService::audioLevelChanged, [&] { ++changes; });
    service->startRecording();
    engine().feed({0.5F});
    EXPECT_EQ(service->audioLevel(), 0.0);
    scheduler.runPosted();
    EXPECT_EQ(service->audioLevel(), 0.375);
    EXPECT_EQ(changes, 1);
}

TEST_F(AudioServiceMeter, SilenceHasZeroBandsAndHalvesTheLevel) {
    service->startRecording();
    hear({0.5F, -0.5F});
    const auto bands = service->fftBands();
    const double level = service->audioLevel();
    hear(std::vector<float>(1024));
    EXPECT_EQ(service->audioLevel(), level / 2);
    for (std::size_t band = 0; band < bands.size(); ++band) {
        EXPECT_DOUBLE_EQ(service->fftBands()[band], bands[band] * (1 - 0.45));
    }
}

TEST_F(AudioServiceMeter, SilenceFromTheStartPublishesNothing) {
    service->startRecording();
    int changes = 0;
    for (const auto signal : {&AudioService::audioLevelChanged, &AudioService::fftBandsChanged}) {
        QObject::connect(service.get(), signal, [&changes] { ++changes; });
    }
    hear(std::vector<float>(1024));
    EXPECT_EQ(service->fftBands(), AudioService::Bands{});
    EXPECT_EQ(changes, 0);
}

TEST_F(AudioServiceMeter, BandsRiseByThreeQuartersOfTheWay) {
    const auto samples = sine(1000, 0.5);
    const FFTBands computed = Spectrum().computeFFTBands(samples);
    ASSERT_GT(computed[66], 0.3);
    service->startRecording();
    hear(samples);
    EXPECT_DOUBLE_EQ(service->fftBands()[66], computed[66] * 0.75);
    hear(samples);
    EXPECT_DOUBLE_EQ(service->fftBands()[66], computed[66] * 0.75 + 0.25 * (computed[66] * 0.75));
}

TEST_F(AudioServiceMeter, TheSpectrumIsThatOfTheSamplesBeforeGain) {
    const auto samples = sine(1000, 0.5);
    const auto plain = firstBands(samples);
    service->setInputGain(20 * std::log10(0.5));
    EXPECT_EQ(firstBands(samples), plain);
    service->setInputGain(40);
    EXPECT_EQ(firstBands(samples), plain);
}

TEST_F(AudioServiceMeter, WithTheGateClosedTheLevelFallsAndTheSpectrumMoves) {
    const auto samples = sine(1000, 0.5);
    service->startRecording();
    hear(samples);
    const double level = service->audioLevel();
    const double band = service->fftBands()[66];
    service->setNoiseGate(0.9);
    hear(samples);
    EXPECT_EQ(service->audioLevel(), level / 2);
    EXPECT_GT(service->fftBands()[66], band);
}

TEST_F(AudioServiceMeter, TheGateIsOpenAtFifteenThousandthsByDefault) {
    service->startRecording();
    hear({0.015F});
    const double open = service->audioLevel();
    EXPECT_NEAR(open, 0.015 * 1.5 / 2, 1e-9);
    hear({0.0149F});
    EXPECT_EQ(service->audioLevel(), open / 2);
}

TEST_F(AudioServiceMeter, StopPublishesZeros) {
    service->startRecording();
    hear(sine(1000, 0.5));
    ASSERT_GT(service->audioLevel(), 0.0);
    ASSERT_NE(service->fftBands(), AudioService::Bands{});
    static_cast<void>(service->stopRecording());
    EXPECT_EQ(service->audioLevel(), 0.0);
    EXPECT_EQ(service->fftBands(), AudioService::Bands{});
    service->startRecording();
    hear({0.5F});
    EXPECT_EQ(service->audioLevel(), 0.375); // the smoother began at zero as well
}

TEST_F(AudioServiceMeter, ALateUpdateOfAnOldRecordingIsDropped) {
    service->startRecording();
    engine().feed(sine(1000, 0.5));
    static_cast<void>(service->stopRecording());
    service->startRecording();
    scheduler.runPosted();
    EXPECT_EQ(service->audioLevel(), 0.0);
    EXPECT_EQ(service->fftBands(), AudioService::Bands{});
    hear({0.5F});
    EXPECT_EQ(service->audioLevel(), 0.375);
}

TEST_F(AudioServiceMeter, AnUpdatePostedJustBeforeTheStopStillLands) {
    service->startRecording();
    engine().feed({0.5F});
    static_cast<void>(service->stopRecording());
    EXPECT_EQ(service->audioLevel(), 0.0);
    scheduler.runPosted();
    EXPECT_EQ(service->audioLevel(), 0.375);
}

TEST_F(AudioServiceMeter, AStartClearsTheLevelThatALateUpdateLeft) {
    service->startRecording();
    engine().feed({0.5F});
    static_cast<void>(service->stopRecording());
    scheduler.runPosted();
    ASSERT_EQ(service->audioLevel(), 0.375);
    service->startRecording();
    EXPECT_EQ(service->audioLevel(), 0.0);
    hear({0.5F});
    EXPECT_EQ(service->audioLevel(), 0.375); // so the smoother began at zero, too
}

TEST_F(AudioServiceMeter, AServiceThatIsGoneGetsNoUpdate) {
    service->startRecording();
    int changes = 0;
    QObject::connect(service.get(), &AudioService::audioLevelChanged, [&] { ++changes; });
    engine().feed({0.5F});
    service.reset();
    scheduler.runPosted();
    EXPECT_EQ(changes, 0);
}
