#include "unit/platform/linux/pulse/PulseServerFixture.h"
#include "unit/platform/linux/pulse/ToneAnalysis.h"

#include <tuple>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::Field;

namespace {

/// The last `frames` frames of one channel of interleaved samples.
std::vector<float> channelOf(const std::vector<float>& samples, std::size_t channel,
                             std::size_t channelCount, std::size_t frames) {
    std::vector<float> result;
    for (std::size_t frame = samples.size() / channelCount - frames;
         frame < samples.size() / channelCount; ++frame) {
        result.push_back(samples[frame * channelCount + channel]);
    }
    return result;
}

} // namespace

TEST_F(PulseServerTest, CapturesInTheNativeFormatAndInBlocksOfTheAskedSize) {
    for (const auto& [rate, channels, frames] :
         {std::tuple{48000, 2U, 1023U}, std::tuple{44100, 1U, 882U}}) {
        server.start({sinkModule(u"room"_s, rate, static_cast<int>(channels)),
                      microphoneModule(u"mic"_s, u"room"_s, u"Desk Microphone"_s),
                      toneModule(u"room"_s, 1000)});
        Recording recording;
        PulseAudioHost own(scheduler);
        const auto engine = own.makeCaptureEngine();
        EXPECT_EQ(engine->inputFormat(),
                  (AudioFormat{.sampleRate = static_cast<double>(rate), .channelCount = channels}));
        engine->installTap(frames, recording.tap());
        engine->prepare();
        EXPECT_FALSE(engine->isRunning());
        engine->start();
        EXPECT_TRUE(engine->isRunning());
        const std::size_t blocks = 30;
        ASSERT_TRUE(recording.waitFor(blocks * frames * channels));
        engine->stop();
        EXPECT_FALSE(engine->isRunning());
        EXPECT_THAT(recording.blockCounts(),
                    ElementsAre(Field(&std::pair<const std::size_t, int>::first,
                                      std::size_t{frames} * channels)));
        for (std::size_t channel = 0; channel < channels; ++channel) {
            const auto samples = channelOf(recording.samples(), channel, channels, 4410);
            const SineFit fit = fitSine(samples, 1000, rate);
            EXPECT_GT(fit.amplitude, 0.1);
            EXPECT_GT(fit.sinad(), 40); // the sink's samples have 16 bits
        }
        server.kill();
    }
}

TEST_F(PulseServerTest, CapturesFromTheChosenDevice) {
    startServer();
    server.command(u"load-module "_s + sinkModule(u"phone"_s, 32000, 1));
    server.command(u"load-module "_s + microphoneModule(u"headset"_s, u"phone"_s, u"Headset"_s));
    server.command(u"load-module "_s + toneModule(u"phone"_s, 3000));
    Recording recording;
    const auto engine = host().makeCaptureEngine();
    engine->setDevice(numberOf("Headset"));
    EXPECT_EQ(engine->inputFormat(), (AudioFormat{.sampleRate = 32000, .channelCount = 1}));
    engine->installTap(1024, recording.tap());
    engine->start();
    ASSERT_TRUE(recording.waitFor(16000));
    engine->removeTap();
    const auto samples = channelOf(recording.samples(), 0, 1, 3200);
    EXPECT_GT(fitSine(samples, 3000, 32000).sinad(), 40);
    EXPECT_LT(fitSine(samples, 1000, 32000).amplitude, 0.01);
}

TEST_F(PulseServerTest, ARemovedTapIsNotCalledAnyMore) {
    startServer();
    Recording removed;
    Recording witness;
    const auto engine = host().makeCaptureEngine();
    engine->installTap(64, removed.tap());
    engine->start();
    const auto other = host().makeCaptureEngine();
    other->installTap(64, witness.tap());
    other->start();
    ASSERT_TRUE(removed.waitFor(1024));
    engine->removeTap();
    const std::size_t size = removed.size();
    ASSERT_TRUE(witness.waitFor(witness.size() + 20000));
    EXPECT_EQ(removed.size(), size);
    EXPECT_TRUE(engine->isRunning());
}

TEST_F(PulseServerTest, AnEngineGoesOnWhereTheLastOneStopped) {
    startServer();
    constexpr std::size_t channels = 2;
    constexpr std::uint32_t frames = 1023;
    Recording before;
    Recording after;
    auto first = host().makeCaptureEngine();
    first->setLatency(300ms);
    first->installTap(frames, before.tap());
    first->start();
    ASSERT_TRUE(before.waitFor(10 * frames * channels));
    first->removeTap();
    first->stop();
    first.reset();
    const auto second = host().makeCaptureEngine();
    second->installTap(frames, after.tap());
    second->start();
    ASSERT_TRUE(after.waitFor(10 * frames * channels));
    second->removeTap();

    // One sine without a leap: from a seam of even a single frame its fit would suffer.
    auto both = channelOf(before.samples(), 0, channels, 2205);
    const auto taken = after.samples();
    for (std::size_t frame = 0; frame < 2205; ++frame) {
        both.push_back(taken[frame * channels]);
    }
    const SineFit fit = fitSine(both, 1000, 48000);
    EXPECT_GT(fit.amplitude, 0.1);
    EXPECT_GT(fit.sinad(), 40);
}

TEST_F(PulseServerTest, WhatAnEngineLeavesIsGoneWithTheTurn) {
    startServer();
    Recording recording;
    const auto engine = host().makeCaptureEngine();
    engine->installTap(1023, recording.tap());
    engine->start();
    ASSERT_TRUE(recording.waitFor(1023));
    const auto streams = [this] { return server.command(u"list-source-outputs"_s); };
    ASSERT_TRUE(streams().contains(u"Dictation"_s));
    engine->stop();
    EXPECT_TRUE(eventually([&] { return !streams().contains(u"Dictation"_s); }));
}

TEST_F(PulseServerTest, ALostDeviceInterruptsAtOnceAndOnce) {
    startServer();
    Recording recording;
    int interruptions = 0;
    const auto engine = host().makeCaptureEngine();
    engine->setInterruptionHandler([&](const std::string& reason) {
        ++interruptions;
        EXPECT_FALSE(reason.empty());
        EXPECT_FALSE(engine->isRunning());
    });
    engine->installTap(1023, recording.tap());
    engine->start();
    ASSERT_TRUE(recording.waitFor(20000));
    const auto wait = timeOf([&] {
        server.command(u"unload-module module-remap-source"_s);
        ASSERT_TRUE(eventually([&] { return interruptions > 0; }));
    });
    EXPECT_LT(wait, 200ms);
    const std::size_t size = recording.size();
    // The other one's samples show that time goes on.
    Recording witness;
    const auto other = host().makeCaptureEngine();
    other->installTap(1023, witness.tap());
    other->start();
    ASSERT_TRUE(eventually([&] { return witness.size() > 20000; }));
    EXPECT_EQ(recording.size(), size);
    EXPECT_EQ(interruptions, 1);
}
