#include "services/audio/Metering.h"

#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

using namespace quorvin;

TEST(Metering, GainOfZeroDecibelsIsExactlyOne) {
    EXPECT_EQ(gainFactor(0), 1.0F);
}

TEST(Metering, GainFactorsOfKnownDecibels) {
    EXPECT_NEAR(gainFactor(6), 1.9952623F, 1e-6F);
    EXPECT_EQ(gainFactor(-20), 0.1F);
    EXPECT_EQ(gainFactor(20), 10.0F);
}

TEST(Metering, RMSOfKnownSignals) {
    EXPECT_DOUBLE_EQ(rms(std::vector{0.5F, -0.5F, 0.5F, -0.5F}), 0.5);
    EXPECT_DOUBLE_EQ(rms(std::vector{3.0F, 4.0F}), std::sqrt(12.5));
    EXPECT_EQ(rms(std::vector<float>(1000)), 0.0);
}

TEST(Metering, RMSIsSummedInDoublePrecision) {
    // In single precision the small squares would vanish beside the large one.
    std::vector<float> samples(100'000, 1e-4F);
    samples[0] = 1.0F;
    EXPECT_NEAR(rms(samples), std::sqrt((1.0 + 99'999 * 1e-8) / 100'000), 1e-10);
}

TEST(Metering, FirstChannelRMSIgnoresTheOtherChannels) {
    EXPECT_EQ(firstChannelRMS(std::vector{0.5F, 9.0F, -0.5F, 7.0F}, 2), 0.5F);
    EXPECT_EQ(firstChannelRMS(std::vector{0.25F, -0.25F}, 1), 0.25F);
    EXPECT_EQ(firstChannelRMS(std::vector{3.0F, 9.0F, 4.0F, 7.0F}, 2), std::sqrt(12.5F));
}

TEST(Metering, TargetIsOneAndAHalfTimesTheRMS) {
    EXPECT_DOUBLE_EQ(meterTarget(0.5, 0.015F), 0.75);
    EXPECT_DOUBLE_EQ(meterTarget(1.0, 0.015F), 1.5); // limited only when it is published
}

TEST(Metering, GateClosesBelowItsThresholdAndNotAtIt) {
    EXPECT_DOUBLE_EQ(meterTarget(0.5, 0.5F), 0.75);
    EXPECT_EQ(meterTarget(0.5, std::nextafter(0.5F, 1.0F)), 0.0);
}

TEST(Metering, GateComparesInSinglePrecision) {
    ASSERT_GT(0.1F, 0.1); // as doubles the threshold would be the greater one
    EXPECT_DOUBLE_EQ(meterTarget(0.1, 0.1F), 0.1 * 1.5);
}

TEST(Metering, RecordingLevelMovesByHalvesBothWays) {
    EXPECT_EQ(smoothedLevel(0, 0.75, recordingSmoothing), 0.375);
    EXPECT_EQ(smoothedLevel(0.375, 0.75, recordingSmoothing), 0.5625);
    EXPECT_EQ(smoothedLevel(0.5625, 0, recordingSmoothing), 0.28125);
}

TEST(Metering, MonitoringLevelKeepsSevenTenths) {
    EXPECT_DOUBLE_EQ(smoothedLevel(1, 0, monitoringSmoothing), 0.7);
    EXPECT_DOUBLE_EQ(smoothedLevel(0, 1, monitoringSmoothing), 0.3);
}

TEST(Metering, ATargetThatIsNoFiniteNumberCountsAsSilence) {
    EXPECT_EQ(smoothedLevel(0.5, std::numeric_limits<double>::quiet_NaN(), recordingSmoothing),
              0.25);
    EXPECT_EQ(smoothedLevel(0.5, std::numeric_limits<double>::infinity(), recordingSmoothing),
              0.25);
}

TEST(Metering, BandsRiseFasterThanTheyFall) {
    FFTBands published{};
    FFTBands computed{};
    published[0] = 0.2;
    computed[0] = 0.6;
    published[1] = 0.6;
    computed[1] = 0.2;
    published[95] = 0.4;
    computed[95] = 0.4;
    const FFTBands next = smoothedBands(published, computed);
    EXPECT_DOUBLE_EQ(next[0], 0.6 * 0.75 + 0.25 * 0.2);
    EXPECT_DOUBLE_EQ(next[1], 0.2 * 0.45 + 0.55 * 0.6);
    EXPECT_DOUBLE_EQ(next[95], 0.4);
    EXPECT_EQ(next[50], 0.0);
}
