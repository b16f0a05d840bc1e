#pragma once

#include "platform/linux/pulse/PulseAudioHost.h"
#include "platform/qt/QtScheduler.h"
#include "support/Eventually.h"
#include "support/SoundServer.h"

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quorvin::testing {

inline constexpr auto patience = std::chrono::seconds(20);

template <typename Work>
std::chrono::steady_clock::duration timeOf(Work work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::steady_clock::now() - begin;
}

/// What a tap got. Lives longer than the engine that it is given.
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

/// Each test has a sound server, and a host that connects on first use.
class PulseServerTest : public ::testing::Test {
protected:
    void startServer() {
        using namespace Qt::Literals::StringLiterals;
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
        static_cast<void>(eventually([&] { return answer.has_value(); }));
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

} // namespace quorvin::testing
