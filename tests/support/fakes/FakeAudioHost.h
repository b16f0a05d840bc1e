#pragma once

#include "platform/AudioHost.h"

#include <algorithm>
#include <deque>
#include <initializer_list>
#include <map>
#include <mutex>
#include <utility>

namespace quorvin::testing {

class FakeAudioHost;

/// A microphone that says what the test makes it say.
class FakeCaptureEngine final : public CaptureEngine {
public:
    explicit FakeCaptureEngine(FakeAudioHost& host);
    ~FakeCaptureEngine() override;

    /// Calls the tap, on the caller's thread, with exactly these samples as one buffer. Without
    /// effect when the engine doesn't run or has no tap.
    void feed(std::span<const float> samples) {
        const std::lock_guard lock(m_tapMutex);
        if (m_running && m_tap) {
            m_tap(samples);
        }
    }
    void feed(std::initializer_list<float> samples) {
        feed(std::span(samples.begin(), samples.end()));
    }

    /// The device goes away, or the sound server.
    void interrupt(const std::string& reason) {
        {
            const std::lock_guard lock(m_tapMutex);
            m_running = false;
        }
        if (m_interruptionHandler) {
            m_interruptionHandler(reason);
        }
    }

    /// As bound by `setDevice`; absent on the system's default.
    std::optional<std::uint32_t> deviceNumber;
    std::uint32_t tapFrameCount = 0;
    /// Absent when never told.
    std::optional<std::chrono::milliseconds> latency;

    void setDevice(std::uint32_t number) override;
    [[nodiscard]] AudioFormat inputFormat() override;
    void setLatency(std::chrono::milliseconds told) override { latency = told; }
    void installTap(std::uint32_t frameCount, Tap tap) override;
    void removeTap() override;
    void setInterruptionHandler(std::function<void(const std::string&)> handler) override {
        m_interruptionHandler = std::move(handler);
    }
    void prepare() override;
    void start() override;
    void stop() override;
    [[nodiscard]] bool isRunning() const override { return m_running; }

private:
    FakeAudioHost& m_host;
    std::mutex m_tapMutex; // guards m_tap and m_running, and is held while the tap runs
    Tap m_tap;
    bool m_running = false;
    std::function<void(const std::string&)> m_interruptionHandler;
};

/// Folds to one channel by the mean and keeps every n-th frame, n being the ratio of the rates.
class FakeSampleConverter final : public SampleConverter {
public:
    FakeSampleConverter(FakeAudioHost& host, const AudioFormat& from, const AudioFormat& to)
        : m_host(host)
        , m_channelCount(from.channelCount)
        , m_step(static_cast<std::size_t>(from.sampleRate / to.sampleRate)) {}

    std::size_t convert(std::span<const float> input, std::span<float> output) override;

private:
    FakeAudioHost& m_host;
    std::size_t m_channelCount;
    std::size_t m_step;
    std::size_t m_frame = 0;
    std::deque<float> m_ready;
};

/// A machine with scripted microphones.
class FakeAudioHost final : public AudioHost {
public:
    using ConverterFactory = std::function<std::unique_ptr<SampleConverter>(const AudioFormat& from,
                                                                            const AudioFormat& to)>;

    // What the host answers.
    MicrophoneAuthorization authorization = MicrophoneAuthorization::authorized;
    /// The user's answer to `requestAccess`: resolve it with yes or no.
    Pending<bool> accessAnswer;
    std::vector<AudioDevice> deviceList;
    /// Fails `devices` with this number.
    std::optional<int> devicesFailure;
    /// Of every engine; a device that stands in `deviceFormats` has its own.
    AudioFormat inputFormat{16000.0, 1};
    std::map<std::uint32_t, AudioFormat> deviceFormats;
    /// Fails the start of every engine with these words.
    std::optional<std::string> startFailure;
    /// Fails every conversion with these words.
    std::optional<std::string> conversionFailure;
    /// May return nothing.
    ConverterFactory converterFactory = [this](const AudioFormat& from, const AudioFormat& to) {
        return std::make_unique<FakeSampleConverter>(*this, from, to);
    };

    // What was asked of it.
    int accessRequests = 0;
    int enginesMade = 0;
    /// The engines alive, in the order of their making.
    std::vector<FakeCaptureEngine*> engines;
    std::vector<std::pair<AudioFormat, AudioFormat>> convertersMade;
    /// The operations on engines in their order, "setDevice 7" for instance.
    std::vector<std::string> calls;

    /// Number of the error of `setDevice` for a number that `deviceList` doesn't have.
    static constexpr int noSuchDevice = -10851;

    [[nodiscard]] MicrophoneAuthorization authorizationStatus() override { return authorization; }
    [[nodiscard]] Task<bool> requestAccess() override {
        ++accessRequests;
        const Pending<bool> answer = accessAnswer;
        const bool granted = co_await answer;
        co_return granted;
    }
    [[nodiscard]] std::vector<AudioDevice> devices() override {
        if (devicesFailure) {
            throw AudioHostError("the device list is not available", *devicesFailure);
        }
        return deviceList;
    }
    [[nodiscard]] std::unique_ptr<CaptureEngine> makeCaptureEngine() override {
        ++enginesMade;
        return std::make_unique<FakeCaptureEngine>(*this);
    }
    [[nodiscard]] std::unique_ptr<SampleConverter>
    makeSampleConverter(const AudioFormat& from, const AudioFormat& to) override {
        convertersMade.emplace_back(from, to);
        return converterFactory(from, to);
    }
};

inline FakeCaptureEngine::FakeCaptureEngine(FakeAudioHost& host) : m_host(host) {
    m_host.engines.push_back(this);
}

inline FakeCaptureEngine::~FakeCaptureEngine() {
    std::erase(m_host.engines, this);
}

inline void FakeCaptureEngine::setDevice(std::uint32_t number) {
    m_host.calls.push_back("setDevice " + std::to_string(number));
    const bool known = std::any_of(m_host.deviceList.begin(), m_host.deviceList.end(),
                                   [number](const AudioDevice& d) { return d.number == number; });
    if (!known) {
        throw AudioHostError("no such device", FakeAudioHost::noSuchDevice);
    }
    deviceNumber = number;
}

inline AudioFormat FakeCaptureEngine::inputFormat() {
    m_host.calls.emplace_back("inputFormat");
    const auto own = m_host.deviceFormats.find(deviceNumber.value_or(0));
    return own == m_host.deviceFormats.end() ? m_host.inputFormat : own->second;
}

inline void FakeCaptureEngine::installTap(std::uint32_t frameCount, Tap tap) {
    m_host.calls.emplace_back("installTap");
    const std::lock_guard lock(m_tapMutex);
    tapFrameCount = frameCount;
    m_tap = std::move(tap);
}

inline void FakeCaptureEngine::removeTap() {
    m_host.calls.emplace_back("removeTap");
    const std::lock_guard lock(m_tapMutex);
    m_tap = nullptr;
}

inline void FakeCaptureEngine::prepare() {
    m_host.calls.emplace_back("prepare");
}

inline void FakeCaptureEngine::start() {
    m_host.calls.emplace_back("start");
    if (m_host.startFailure) {
        throw AudioHostError(*m_host.startFailure, -1);
    }
    const std::lock_guard lock(m_tapMutex);
    m_running = true;
}

inline void FakeCaptureEngine::stop() {
    m_host.calls.emplace_back("stop");
    const std::lock_guard lock(m_tapMutex);
    m_running = false;
}

inline std::size_t FakeSampleConverter::convert(std::span<const float> input,
                                                std::span<float> output) {
    if (m_host.conversionFailure) {
        throw SampleConverterError(*m_host.conversionFailure);
    }
    for (std::size_t begin = 0; begin < input.size(); begin += m_channelCount, ++m_frame) {
        if (m_frame % m_step == 0) {
            float sum = 0;
            for (const float sample : input.subspan(begin, m_channelCount)) {
                sum += sample;
            }
            m_ready.push_back(sum / static_cast<float>(m_channelCount));
        }
    }
    const std::size_t count = std::min(output.size(), m_ready.size());
    std::copy_n(m_ready.begin(), count, output.begin());
    m_ready.erase(m_ready.begin(), m_ready.begin() + static_cast<std::ptrdiff_t>(count));
    return count;
}

} // namespace quorvin::testing
