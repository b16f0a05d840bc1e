#include "services/audio/CaptureChain.h"
#include "support/fakes/FakeAudioHost.h"

#include <cmath>
#include <numeric>

#include <gtest/gtest.h>

using namespace quorvin;
using quorvin::testing::FakeAudioHost;

namespace {

class CaptureChainTest : public ::testing::Test {
protected:
    CaptureChain chain(const AudioFormat& hardware) {
        return CaptureChain(TapInput(hardware, host.makeSampleConverter(hardware, targetFormat)));
    }
    static std::vector<float> values(std::span<const float> samples) {
        return {samples.begin(), samples.end()};
    }

    FakeAudioHost host;
};

constexpr float openGate = 0;

} // namespace

TEST(CaptureFormat, OnlySixteenKilohertzMonoNeedsNoConversion) {
    EXPECT_FALSE(needsConversion({16000.0, 1}));
    EXPECT_TRUE(needsConversion({16000.0, 2}));
    EXPECT_TRUE(needsConversion({48000.0, 1}));
    EXPECT_TRUE(needsConversion({15999.999, 1}));
}

TEST(CaptureFormat, AFormatWithoutRateOrChannelsIsUnusable) {
    EXPECT_TRUE(isUsable({8000.0, 1}));
    EXPECT_FALSE(isUsable({0.0, 2}));
    EXPECT_FALSE(isUsable({-48000.0, 2}));
    EXPECT_FALSE(isUsable({std::nan(""), 2}));
    EXPECT_FALSE(isUsable({48000.0, 0}));
}

TEST(CaptureFormat, OutputCapacityIsTruncatedWithoutAMargin) {
    EXPECT_EQ(outputCapacity(48000, 1024), 341U);
    EXPECT_EQ(outputCapacity(48000, 1023), 341U);
    EXPECT_EQ(outputCapacity(44100, 1024), 371U);
    EXPECT_EQ(outputCapacity(8000, 1024), 2048U);
    EXPECT_EQ(outputCapacity(48000, 2), 0U);
    EXPECT_EQ(outputCapacity(48000, 0), 0U);
}

TEST(CaptureFormatDeathTest, ACapacityBeyondThirtyTwoBitsIsFatal) {
    EXPECT_EQ(outputCapacity(16000.0 / 4294967295.0, 1), 4294967295U);
    EXPECT_DEATH(static_cast<void>(outputCapacity(1e-6, 1024)), "Impossible capacity");
}

TEST(CaptureFormat, TapSizeIsTheNearestThatLosesTheLeast) {
    EXPECT_EQ(captureFrameCount(48000), 1023U);
    EXPECT_EQ(captureFrameCount(44100), 882U);
    EXPECT_EQ(captureFrameCount(96000), 1026U);
    EXPECT_EQ(captureFrameCount(16000), 1024U);
    EXPECT_EQ(captureFrameCount(32000), 1024U);
    EXPECT_EQ(captureFrameCount(8000), 1024U);
    EXPECT_EQ(captureFrameCount(192000), 1020U); // 1032 lies farther off
}

TEST(CaptureFormat, TapSizeWeighsTheLossByTime) {
    // 1105 frames cut off as much of a sample as 1852 do, but more often.
    EXPECT_EQ(captureFrameCount(249'000), 1852U);
}

TEST(CaptureFormat, TapSizeStaysInRangeWhereNothingFits) {
    for (const double rate : {47999.0, 44099.5, 16000.001, 1e9}) {
        SCOPED_TRACE(rate);
        EXPECT_GE(captureFrameCount(rate), 512U);
        EXPECT_LE(captureFrameCount(rate), 2048U);
    }
}

TEST(CaptureFormat, TenMinutesInSuchTapsLoseNothing) {
    for (const std::uint64_t rate : {8000U, 11025U, 12000U, 16000U, 22050U, 24000U, 32000U, 44100U,
                                     48000U, 64000U, 88200U, 96000U, 176400U, 192000U, 384000U}) {
        SCOPED_TRACE(rate);
        const auto frames = captureFrameCount(static_cast<double>(rate));
        const std::uint64_t taps = 600 * rate / frames;
        const std::uint64_t stored = taps * outputCapacity(static_cast<double>(rate), frames);
        EXPECT_EQ(stored * rate, taps * frames * 16000);
    }
    // What the plain size would cost at 48 kHz: nine thousand samples, over half a second.
    EXPECT_EQ(600 * 16000 - 600 * 48000 / 1024 * outputCapacity(48000, 1024), 9375U);
}

TEST_F(CaptureChainTest, TenMinutesThroughTheChainAreComplete) {
    auto capture = chain({48000.0, 1});
    const std::size_t taps = 600 * 48000 / 1023;
    const std::vector<float> buffer(1023, 0.25F);
    std::size_t stored = 0;
    for (std::size_t i = 0; i < taps; ++i) {
        stored += capture.process(buffer, 1.0F, openGate)->gainedSamples.size();
    }
    EXPECT_EQ(stored, taps * 341);
}

TEST_F(CaptureChainTest, WithoutConversionAndGainTheSamplesPassUntouched) {
    auto capture = chain(targetFormat);
    const std::vector<float> input{0.1F, -2.5F, 3.0F, 0.0F};
    const auto captured = capture.process(input, 1.0F, openGate);
    ASSERT_TRUE(captured);
    EXPECT_EQ(captured->samples.data(), input.data()); // not even copied
    EXPECT_EQ(captured->gainedSamples.data(), input.data());
    EXPECT_EQ(captured->gainedSamples.size(), input.size());
}

TEST_F(CaptureChainTest, GainLimitsTheTakeAndSparesTheSpectrum) {
    auto capture = chain(targetFormat);
    const std::vector<float> input{0.75F, -0.75F, 0.25F};
    const auto captured = capture.process(input, 2.0F, openGate);
    ASSERT_TRUE(captured);
    EXPECT_EQ(values(captured->gainedSamples), (std::vector{1.0F, -1.0F, 0.5F}));
    EXPECT_EQ(values(captured->samples), input);
}

TEST_F(CaptureChainTest, TheMeterReadsTheSamplesAfterGain) {
    auto capture = chain(targetFormat);
    const std::vector<float> input{0.25F, -0.25F};
    EXPECT_DOUBLE_EQ(capture.process(input, 2.0F, openGate)->meterTarget, 0.75);
    EXPECT_DOUBLE_EQ(capture.process(input, 1.0F, openGate)->meterTarget, 0.375);
}

TEST_F(CaptureChainTest, AClosedGateSilencesTheMeterAndKeepsTheSamples) {
    auto capture = chain(targetFormat);
    const std::vector<float> input{0.25F, -0.25F};
    const auto captured = capture.process(input, 1.0F, 0.5F);
    ASSERT_TRUE(captured);
    EXPECT_EQ(captured->meterTarget, 0.0);
    EXPECT_EQ(values(captured->gainedSamples), input);
    EXPECT_EQ(values(captured->samples), input);
}

TEST_F(CaptureChainTest, AnEmptyBufferIsDropped) {
    EXPECT_FALSE(chain(targetFormat).process({}, 1.0F, openGate));
    EXPECT_FALSE(chain({48000.0, 2}).process({}, 1.0F, openGate));
}

TEST_F(CaptureChainTest, ABufferTooShortForOneSampleIsDropped) {
    auto capture = chain({48000.0, 2});
    EXPECT_FALSE(capture.process(std::vector(4, 0.25F), 1.0F, openGate));
    const auto next = capture.process(std::vector(6, 0.5F), 1.0F, openGate);
    ASSERT_TRUE(next);
    EXPECT_EQ(values(next->samples), std::vector{0.5F}); // the converter never saw the short one
}

TEST_F(CaptureChainTest, AConverterThatHasNothingReadyDropsTheBuffer) {
    struct Slow final : SampleConverter {
        std::size_t convert(std::span<const float>, std::span<float>) override { return 0; }
    };
    CaptureChain capture(TapInput({48000.0, 1}, std::make_unique<Slow>()));
    EXPECT_FALSE(capture.process(std::vector(1023, 0.5F), 1.0F, openGate));
}

TEST_F(CaptureChainTest, WithoutTheConverterItNeedsItDropsEverything) {
    CaptureChain capture(TapInput({48000.0, 1}, nullptr));
    EXPECT_FALSE(capture.process(std::vector(1023, 0.5F), 1.0F, openGate));
}

TEST_F(CaptureChainTest, TheConverterFoldsTheChannelsAndKeepsItsState) {
    auto capture = chain({48000.0, 2});
    // Frames 0 to 8 of a stream of left = n, right = n + 1, of which every third is kept.
    const std::vector<float> first{0, 1, 1, 2, 2, 3, 3, 4, 4, 5};
    const std::vector<float> second{5, 6, 6, 7, 7, 8, 8, 9};
    EXPECT_EQ(values(capture.process(first, 1.0F, openGate)->samples), std::vector{0.5F});
    // Frame 3 was ready at once but found no room in a capacity of one.
    EXPECT_EQ(values(capture.process(second, 1.0F, openGate)->samples), std::vector{3.5F});
}

TEST_F(CaptureChainTest, AFailedConversionLosesOneBuffer) {
    auto capture = chain({48000.0, 1});
    host.conversionFailure = "broken";
    EXPECT_THROW(static_cast<void>(capture.process(std::vector(1023, 0.5F), 1.0F, openGate)),
                 SampleConverterError);
    host.conversionFailure.reset();
    EXPECT_TRUE(capture.process(std::vector(1023, 0.5F), 1.0F, openGate));
}
