#include "AudioServiceFixture.h"

#include <algorithm>
#include <atomic>
#include <numeric>
#include <thread>

using namespace quorvin;
using namespace quorvin::testing;

namespace {

/// A capture thread beside the main thread of the test.
class AudioServiceConcurrency : public AudioServiceFixture {
protected:
    static constexpr std::size_t bufferSize = 256;
    static constexpr std::size_t bufferCount = 500;

    /// Feeds a stream whose sample n has the value n + 1, while `meanwhile` runs again and again.
    template <typename Work>
    void feedWhile(Work meanwhile) {
        std::atomic<bool> done = false;
        std::thread capture([&done, &microphone = engine()] {
            std::vector<float> buffer(bufferSize);
            for (std::size_t i = 0; i < bufferCount; ++i) {
                std::iota(buffer.begin(), buffer.end(), static_cast<float>(i * bufferSize + 1));
                microphone.feed(buffer);
            }
            done = true;
        });
        while (!done) {
            meanwhile();
        }
        capture.join();
    }
    static std::vector<float> stream() {
        std::vector<float> samples(bufferSize * bufferCount);
        std::iota(samples.begin(), samples.end(), 1.0F);
        return samples;
    }
};

} // namespace

TEST_F(AudioServiceConcurrency, TheTakeIsCompleteAndInOrder) {
    service->startRecording();
    std::size_t prepended = 0;
    feedWhile([&] {
        scheduler.runPosted();
        service->setNoiseGate(prepended % 2 == 0 ? 0.0 : 0.5);
        if (prepended < 10) {
            service->prependSamples(std::vector{-1.0F});
            ++prepended;
        }
    });
    scheduler.runPosted();
    std::vector<float> expected(prepended, -1.0F);
    const auto heard = stream();
    expected.insert(expected.end(), heard.begin(), heard.end());
    EXPECT_EQ(service->stopRecording(), expected);
}

TEST_F(AudioServiceConcurrency, DrainsBesideTheTapLoseAndRepeatNothing) {
    service->startKeepWarm();
    std::vector<float> drained;
    const auto drain = [&] {
        const auto samples = service->drainWarmBuffer();
        drained.insert(drained.end(), samples.begin(), samples.end());
    };
    feedWhile(drain);
    drain();
    // A drain that came late finds the latest three seconds: what is there is in order.
    EXPECT_LE(drained.size(), bufferSize * bufferCount);
    EXPECT_TRUE(std::is_sorted(drained.begin(), drained.end()));
    EXPECT_EQ(std::adjacent_find(drained.begin(), drained.end()), drained.end());
    ASSERT_FALSE(drained.empty());
    EXPECT_EQ(drained.back(), static_cast<float>(bufferSize * bufferCount));
}
