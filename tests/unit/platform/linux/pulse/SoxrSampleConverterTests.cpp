#include "platform/linux/pulse/SoxrSampleConverter.h"
#include "unit/platform/linux/pulse/ToneAnalysis.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace quorvin;
using quorvin::testing::fitSine;
using quorvin::testing::power;
using quorvin::testing::tone;

namespace {

constexpr AudioFormat speech{.sampleRate = 16000, .channelCount = 1};

/// Feeds `input` in buffers of `frames` frames, with room for all that comes.
std::vector<float> convertInBuffers(const std::vector<float>& input, const AudioFormat& from,
                                    std::size_t frames) {
    const auto converter = SoxrSampleConverter::make(from, speech);
    std::vector<float> output(
        input.size() / from.channelCount * 16000 / static_cast<std::size_t>(from.sampleRate) + 1);
    std::size_t written = 0;
    std::span<const float> rest(input);
    while (!rest.empty()) {
        const std::size_t size = std::min(frames * from.channelCount, rest.size());
        written += converter->convert(rest.first(size), std::span(output).subspan(written));
        rest = rest.subspan(size);
    }
    output.resize(written);
    return output;
}

/// A second of `frequency` at 16 kHz, once the beginning is over.
std::vector<float> settledTone(double frequency, double sampleRate) {
    const auto input = tone(frequency, 0.5, sampleRate, static_cast<std::size_t>(sampleRate * 1.5));
    auto output = convertInBuffers(input, {.sampleRate = sampleRate, .channelCount = 1}, 1024);
    output.erase(output.begin(), output.begin() + 4000);
    output.resize(16000);
    return output;
}

double decibels(double ratio) {
    return 10 * std::log10(ratio);
}

} // namespace

TEST(SoxrSampleConverterTest, MakesNoneForWhatItCannotConvert) {
    EXPECT_EQ(SoxrSampleConverter::make({.sampleRate = 0, .channelCount = 1}, speech), nullptr);
    EXPECT_EQ(SoxrSampleConverter::make({.sampleRate = -1, .channelCount = 1}, speech), nullptr);
    EXPECT_EQ(
        SoxrSampleConverter::make(
            {.sampleRate = std::numeric_limits<double>::quiet_NaN(), .channelCount = 1}, speech),
        nullptr);
    EXPECT_EQ(SoxrSampleConverter::make({.sampleRate = 48000, .channelCount = 0}, speech), nullptr);
    EXPECT_EQ(SoxrSampleConverter::make({.sampleRate = 48000, .channelCount = 3},
                                        {.sampleRate = 16000, .channelCount = 2}),
              nullptr);
    EXPECT_NE(SoxrSampleConverter::make({.sampleRate = 48000, .channelCount = 2},
                                        {.sampleRate = 16000, .channelCount = 2}),
              nullptr);
}

TEST(SoxrSampleConverterTest, ManyChannelsBecomeTheirMean) {
    const auto converter =
        SoxrSampleConverter::make({.sampleRate = 16000, .channelCount = 3}, speech);
    const std::vector<float> input{0.25F, 0.5F, 0.75F, -1.0F, 0.0F, 0.25F};
    std::vector<float> output(2);
    ASSERT_EQ(converter->convert(input, output), 2U);
    EXPECT_EQ(output, (std::vector{0.5F, -0.25F}));
}

TEST(SoxrSampleConverterTest, WhatFindsNoRoomComesLater) {
    const auto converter =
        SoxrSampleConverter::make({.sampleRate = 16000, .channelCount = 2}, speech);
    const std::vector<float> input{1, 1, 2, 2, 3, 3};
    std::vector<float> output(2);
    EXPECT_EQ(converter->convert(input, {}), 0U);
    EXPECT_EQ(converter->convert({}, output), 2U);
    EXPECT_EQ(output, (std::vector{1.0F, 2.0F}));
    EXPECT_EQ(converter->convert({}, output), 1U);
    EXPECT_EQ(output[0], 3.0F);
    EXPECT_EQ(converter->convert({}, output), 0U);
}

TEST(SoxrSampleConverterTest, AnEmptyBufferDoesNotEndTheStream) {
    const auto converter =
        SoxrSampleConverter::make({.sampleRate = 48000, .channelCount = 1}, speech);
    const auto input = tone(1000, 0.5, 48000, 4800);
    std::vector<float> output(4800);
    const std::size_t first = converter->convert(input, output);
    EXPECT_EQ(converter->convert({}, output), 0U); // an end would flush what is held back
    EXPECT_GT(first + converter->convert(input, output), 3000U);
}

TEST(SoxrSampleConverterTest, FeedingInBuffersEqualsFeedingWhole) {
    for (const double rate : {44100.0, 48000.0, 96000.0}) {
        for (const std::uint32_t channels : {1U, 2U}) {
            const AudioFormat from{.sampleRate = rate, .channelCount = channels};
            const auto input =
                tone(1234.5, 0.7, rate, static_cast<std::size_t>(rate) * 2, channels);
            const auto whole = convertInBuffers(input, from, input.size());
            for (const std::size_t frames : {1U, 441U, 1026U}) {
                const auto pieces = convertInBuffers(input, from, frames);
                const std::size_t common = std::min(whole.size(), pieces.size());
                ASSERT_GT(common, 31000U);
                for (std::size_t i = 0; i < common; ++i) {
                    ASSERT_NEAR(whole[i], pieces[i], 1e-6F)
                        << rate << " Hz in " << frames << " frames, sample " << i;
                }
            }
        }
    }
}

TEST(SoxrSampleConverterTest, SpeechPassesCleanAndWhatLiesAboveDoesNotFoldBack) {
    for (const double rate : {44100.0, 48000.0, 96000.0}) {
        EXPECT_GE(fitSine(settledTone(1000, rate), 1000, 16000).sinad(), 100) << rate;
        EXPECT_LE(decibels(power(settledTone(10000, rate)) / 0.125), -100) << rate;
    }
}

TEST(SoxrSampleConverterTest, TheResponseIsFlatUpTo7Kilohertz) {
    for (const double rate : {44100.0, 48000.0, 96000.0}) {
        for (const double frequency : {50.0, 300.0, 3400.0, 7000.0}) {
            const auto fit = fitSine(settledTone(frequency, rate), frequency, 16000);
            EXPECT_NEAR(2 * decibels(fit.amplitude / 0.5), 0, 0.01) << frequency << " at " << rate;
        }
    }
}

/// Native rate and channel count, and a tap size that is a whole number of frames at 16 kHz.
struct LongTake {
    double rate;
    std::uint32_t channels;
    std::size_t frames;
};

class LongTakeTest : public ::testing::TestWithParam<LongTake> {};

TEST_P(LongTakeTest, TenMinutesLoseLessThanTenMilliseconds) {
    const auto [rate, channels, frames] = GetParam();
    const auto converter =
        SoxrSampleConverter::make({.sampleRate = rate, .channelCount = channels}, speech);
    const auto buffer = tone(440, 0.5, rate, frames, channels);
    std::vector<float> output(
        static_cast<std::size_t>(16000.0 / rate * static_cast<double>(frames)));
    std::size_t fed = 0;
    std::size_t got = 0;
    while (static_cast<double>(fed) < 600 * rate) {
        fed += frames;
        got += converter->convert(buffer, output);
        if (static_cast<double>(fed) > rate) { // a take may end at any moment
            const double missing =
                static_cast<double>(fed) / rate - static_cast<double>(got) / 16000;
            ASSERT_LE(missing, 0.010) << "after " << static_cast<double>(fed) / rate << " s";
            ASSERT_GE(missing, 0);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Rates, LongTakeTest,
                         ::testing::Values(LongTake{44100, 1, 882}, LongTake{44100, 2, 882},
                                           LongTake{48000, 1, 1023}, LongTake{48000, 2, 1023},
                                           LongTake{48000, 1, 1026}, LongTake{96000, 1, 1026},
                                           LongTake{96000, 2, 1026}),
                         [](const auto& instance) {
                             const LongTake& take = instance.param;
                             return std::to_string(static_cast<int>(take.rate)) + "Hz" +
                                    std::to_string(take.channels) + "Channels" +
                                    std::to_string(take.frames) + "Frames";
                         });
