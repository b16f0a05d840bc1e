#include "platform/linux/pulse/PulseAudioHost.h"
#include "platform/qt/QtScheduler.h"
#include "unit/platform/linux/pulse/SoundServer.h"
#include "unit/platform/linux/pulse/ToneAnalysis.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;
using std::chrono::steady_clock;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::Optional;

namespace {

constexpr auto patience = 20s;

/// Runs the event loop until `condition` holds; false when it never does.
bool spinUntil(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(patience);
    QTimer look; // so that conditions of other threads are seen, too
    look.start(2ms);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

template <typename Work>
steady_clock::duration timeOf(Work work) {
    const auto begin = steady_clock::now();
    work();
    return steady_clock::now() - begin;
}

/// What a tap got.
class Recording {
public:
    CaptureEngine::Tap tap() {
        return [this](std::span<const float> samples) {
            {
                const std::lock_guard lock(m_mutex);
                ++m_blockCounts[samples.size()];
                m_samples.insert(m_samples.end(), samples.begin(), samples.end());
            }
            m_grown.notify_all();
        };
    }

    [[nodiscard]] bool waitFor(std::size_t samples) {
        std::unique_lock lock(m_mutex);
        return m_grown.wait_for(lock, patience, [&] { return m_samples.size() >= samples; });
    }
    [[nodiscard]] std::size_t size() const {
        const std::lock_guard lock(m_mutex);
        return m_samples.size();
    }
    [[nodiscard]] std::vector<float> samples() const {
        const std::lock_guard lock(m_mutex);
        return m_samples;
    }
    /// How many blocks came, by their size in samples.
    [[nodiscard]] std::map<std::size_t, int> blockCounts() const {
        const std::lock_guard lock(m_mutex);
        return m_blockCounts;
    }

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_grown;
    std::vector<float> m_samples;
    std::map<std::size_t, int> m_blockCounts;
};

class PulseServerTest : public ::testing::Test {
protected:
    void startServer() {
        server.start({sinkModule(u"room"_s, 48000, 2),
                      microphoneModule(u"mic"_s, u"room"_s, u"Desk Microphone"_s),
                      toneModule(u"room"_s, 1000)});
    }

    PulseAudioHost& host() {
        if (!m_host) {
            m_host.emplace(scheduler);
        }
        return *m_host;
    }

    std::optional<bool> requestAccess() {
        std::optional<bool> answer;
        scheduler.startDetached([this, &answer]() -> Task<> {
            const bool yes = co_await host().requestAccess();
            answer = yes;
        });
        static_cast<void>(spinUntil([&] { return answer.has_value(); }));
        return answer;
    }

    std::uint32_t numberOf(const std::string& name) {
        for (const AudioDevice& device : host().devices()) {
            if (device.name == name) {
                return device.number;
            }
        }
        return 0;
    }

    SoundServer server;
    QtScheduler scheduler;

private:
    std::optional<PulseAudioHost> m_host;
};

/// The samples of one channel from where the tone has begun, about a tenth of a second.
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

TEST_F(PulseServerTest, ListsMicrophonesByDescriptionAndLeavesMonitorsOut) {
    server.start({sinkModule(u"room"_s, 48000, 2), sinkModule(u"phone"_s, 16000, 1),
                  microphoneModule(u"mic_b"_s, u"room"_s, u"Desk Microphone"_s),
                  microphoneModule(u"mic_a"_s, u"phone"_s, u"Headset"_s)});
    const auto devices = host().devices();
    ASSERT_EQ(devices.size(), 2U);
    EXPECT_THAT(devices[0].name, Optional(std::string("Desk Microphone")));
    EXPECT_EQ(devices[0].inputChannelCount, 2U);
    EXPECT_THAT(devices[1].name, Optional(std::string("Headset")));
    EXPECT_EQ(devices[1].inputChannelCount, 1U);
    EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::authorized);
}

TEST_F(PulseServerTest, ListsAMonitorWhereThereIsNothingElse) {
    server.start({sinkModule(u"room"_s, 48000, 2)});
    const auto devices = host().devices();
    ASSERT_EQ(devices.size(), 1U);
    EXPECT_THAT(devices[0].name, Optional(std::string("Monitor of Null Output")));
}

TEST_F(PulseServerTest, TheListFollowsTheServer) {
    startServer();
    ASSERT_EQ(host().devices().size(), 1U);
    server.command(u"load-module "_s +
                   microphoneModule(u"second"_s, u"room"_s, u"Another Microphone"_s));
    EXPECT_TRUE(spinUntil([&] { return host().devices().size() == 2; }));
    server.command(u"unload-module module-remap-source"_s);
    // Without a microphone the sink's monitor is left.
    EXPECT_TRUE(spinUntil([&] { return numberOf("Desk Microphone") == 0; }));
    EXPECT_EQ(host().devices().size(), 1U);
}

TEST_F(PulseServerTest, ANumberNamesTheSameDeviceAfterARestart) {
    startServer();
    const std::uint32_t number = numberOf("Desk Microphone");
    ASSERT_NE(number, 0U);
    server.kill();
    server.start({sinkModule(u"first"_s, 16000, 1),
                  microphoneModule(u"other"_s, u"first"_s, u"Another Microphone"_s),
                  sinkModule(u"room"_s, 48000, 2),
                  microphoneModule(u"mic"_s, u"room"_s, u"Desk Microphone"_s)});
    EXPECT_TRUE(spinUntil(
        [&] { return host().authorizationStatus() == MicrophoneAuthorization::authorized; }));
    EXPECT_EQ(numberOf("Desk Microphone"), number);
    EXPECT_EQ(host().devices().size(), 2U);
}

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

TEST_F(PulseServerTest, AnUnknownDeviceIsAnErrorAndLeavesTheDefault) {
    startServer();
    const auto engine = host().makeCaptureEngine();
    EXPECT_THROW(engine->setDevice(numberOf("Desk Microphone") + 1), AudioHostError);
    EXPECT_EQ(engine->inputFormat(), (AudioFormat{.sampleRate = 48000, .channelCount = 2}));
    engine->start();
    EXPECT_TRUE(engine->isRunning());
}

TEST_F(PulseServerTest, AMonitorAsTheDefaultGivesWayToAMicrophone) {
    server.start({sinkModule(u"room"_s, 48000, 2), sinkModule(u"phone"_s, 16000, 1),
                  microphoneModule(u"headset"_s, u"phone"_s, u"Headset"_s)});
    server.command(u"set-default-source room.monitor"_s);
    const auto engine = host().makeCaptureEngine();
    EXPECT_EQ(engine->inputFormat(), (AudioFormat{.sampleRate = 16000, .channelCount = 1}));
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
        ASSERT_TRUE(spinUntil([&] { return interruptions > 0; }));
    });
    EXPECT_LT(wait, 200ms);
    const std::size_t size = recording.size();
    // The other one's samples show that time goes on.
    Recording witness;
    const auto other = host().makeCaptureEngine();
    other->installTap(1023, witness.tap());
    other->start();
    ASSERT_TRUE(spinUntil([&] { return witness.size() > 20000; }));
    EXPECT_EQ(recording.size(), size);
    EXPECT_EQ(interruptions, 1);
}

TEST_F(PulseServerTest, AKilledServerInterruptsAndItsSuccessorIsUsed) {
    startServer();
    Recording before;
    bool interrupted = false;
    auto engine = host().makeCaptureEngine();
    engine->setInterruptionHandler([&](const std::string&) {
        interrupted = true;
        engine.reset(); // a handler may throw the engine away
    });
    engine->installTap(1023, before.tap());
    engine->start();
    ASSERT_TRUE(before.waitFor(20000));
    server.kill();
    ASSERT_TRUE(spinUntil([&] { return interrupted; }));
    EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::denied);
    EXPECT_THROW(static_cast<void>(host().devices()), AudioHostError);

    startServer();
    EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::authorized);
    Recording after;
    const auto successor = host().makeCaptureEngine();
    successor->installTap(1023, after.tap());
    successor->start();
    EXPECT_TRUE(after.waitFor(20000));
}

TEST_F(PulseServerTest, ADestroyedEngineInterruptsNobody) {
    startServer();
    Recording recording;
    bool interrupted = false;
    auto engine = host().makeCaptureEngine();
    engine->setInterruptionHandler([&](const std::string&) { interrupted = true; });
    engine->installTap(1023, recording.tap());
    engine->start();
    ASSERT_TRUE(recording.waitFor(2046));
    server.kill();
    // This sees the loss without running the event loop: the interruption is posted, not called.
    while (host().authorizationStatus() != MicrophoneAuthorization::denied) {
    }
    engine.reset();
    bool passed = false;
    scheduler.post([&] { passed = true; });
    ASSERT_TRUE(spinUntil([&] { return passed; }));
    EXPECT_FALSE(interrupted);
}

TEST_F(PulseServerTest, ConnectsInTheBackgroundWhenTheServerComesBack) {
    startServer();
    ASSERT_EQ(host().devices().size(), 1U);
    server.kill();
    startServer();
    EXPECT_TRUE(spinUntil([&] {
        return server.command(u"list-clients"_s).contains(u"application.name = \"Quorvin\""_s);
    }));
}

TEST_F(PulseServerTest, WithoutAServerEverythingRefusesQuickly) {
    const auto construction = timeOf([&] { host(); });
    EXPECT_LT(construction, 500ms);
    EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::denied);
    EXPECT_THROW(static_cast<void>(host().devices()), AudioHostError);
    const auto engine = host().makeCaptureEngine();
    EXPECT_THROW(engine->setDevice(1), AudioHostError);
    EXPECT_EQ(engine->inputFormat(), AudioFormat{});
    engine->installTap(1024, [](std::span<const float>) { FAIL(); });
    EXPECT_THROW(engine->start(), AudioHostError);
    EXPECT_FALSE(engine->isRunning());
    EXPECT_EQ(requestAccess(), false);
}

TEST_F(PulseServerTest, AServerThatComesLaterIsAskedFor) {
    EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::denied);
    startServer();
    EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::notDetermined);
    EXPECT_EQ(requestAccess(), true);
    EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::authorized);
}

TEST_F(PulseServerTest, AStartOnAServerThatHangsFailsInTime) {
    startServer();
    Recording recording;
    const auto engine = host().makeCaptureEngine();
    ASSERT_GT(engine->inputFormat().sampleRate, 0);
    server.freeze();
    const auto start = timeOf([&] { EXPECT_THROW(engine->start(), AudioHostError); });
    EXPECT_GT(start, 1500ms);
    EXPECT_LT(start, 2500ms);
    EXPECT_FALSE(engine->isRunning());
    EXPECT_EQ(host().devices().size(), 1U);
    server.thaw();
    engine->installTap(1023, recording.tap());
    engine->start();
    EXPECT_TRUE(recording.waitFor(20000));
}

TEST_F(PulseServerTest, AServerThatHangsFromTheBeginningIsWaitedForOnce) {
    startServer();
    server.freeze();
    EXPECT_LT(timeOf([&] { host(); }), 1500ms);
    EXPECT_LT(timeOf([&] {
                  EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::denied);
                  EXPECT_THROW(static_cast<void>(host().devices()), AudioHostError);
              }),
              500ms);
    server.thaw();
    EXPECT_TRUE(spinUntil(
        [&] { return host().authorizationStatus() == MicrophoneAuthorization::notDetermined; }));
}

TEST_F(PulseServerTest, AQuestionToAServerThatHangsIsAnsweredWithNo) {
    startServer();
    server.freeze();
    host();
    const auto wait = timeOf([&] { EXPECT_EQ(requestAccess(), false); });
    EXPECT_LT(wait, 2500ms);
    server.thaw();
}
