#include "services/transcription/AudioStats.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include <gtest/gtest.h>

using quorvin::audioStats;

TEST(AudioStats, NoSamplesAreSilent) {
    EXPECT_EQ(audioStats({}).peak, 0.0F);
    EXPECT_EQ(audioStats({}).rms, 0.0F);
}

TEST(AudioStats, ThePeakIsTheLargestMagnitudeOfEitherSign) {
    EXPECT_EQ(audioStats(std::vector{0.25F, -0.75F, 0.5F}).peak, 0.75F);
    EXPECT_EQ(audioStats(std::vector{0.25F, -0.5F, 0.75F}).peak, 0.75F);
}

TEST(AudioStats, TheRootMeanSquareOfAConstantIsItsMagnitude) {
    EXPECT_EQ(audioStats(std::vector<float>(1000, -0.5F)).rms, 0.5F);
}

TEST(AudioStats, ASineHasItsPeakOverTheRootOfTwo) {
    std::vector<float> sine(16000);
    for (std::size_t i = 0; i < sine.size(); ++i) {
        sine[i] = 0.8F * std::sin(static_cast<float>(i) * std::numbers::pi_v<float> / 8.0F);
    }
    EXPECT_NEAR(audioStats(sine).rms, 0.8 / std::numbers::sqrt2, 1e-5);
    EXPECT_NEAR(audioStats(sine).peak, 0.8, 1e-6);
}

TEST(AudioStats, EverySampleCountsWhateverTheLength) {
    for (std::size_t size = 1; size <= 40; ++size) {
        for (std::size_t loud = 0; loud < size; ++loud) {
            std::vector<float> samples(size, 0.0F);
            samples[loud] = 0.5F;
            const auto stats = audioStats(samples);
            ASSERT_EQ(stats.peak, 0.5F) << loud << " of " << size;
            ASSERT_FLOAT_EQ(stats.rms, 0.5F / std::sqrt(static_cast<float>(size)));
        }
    }
}

TEST(AudioStats, AMinuteOfFullScaleLosesNothingToRounding) {
    EXPECT_EQ(audioStats(std::vector<float>(960000, 0.9F)).rms, 0.9F);
}
