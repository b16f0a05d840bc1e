#pragma once

#include "platform/SampleConverter.h"
#include "support/Task.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvin {

/// Whether this program may use the microphone; the numbers go to the log.
enum class MicrophoneAuthorization {
    notDetermined = 0,
    restricted = 1,
    denied = 2,
    authorized = 3
};

/// A capture operation that failed, with the system's own words and number.
class AudioHostError : public std::runtime_error {
public:
    AudioHostError(const std::string& message, int code)
        : std::runtime_error(message), m_code(code) {}
    [[nodiscard]] int code() const { return m_code; }

private:
    int m_code;
};

/// One device as the sound system shows it. `number` is never 0 and names the same device at the
/// next start of the program. `name` is absent when the system gives none.
struct AudioDevice {
    std::uint32_t number = 0;
    std::optional<std::string> name;
    std::uint32_t inputChannelCount = 0;
};

/// One capture from one device. Made for one use and then thrown away. All operations on the main
/// thread; only the tap is called on another one, the capture thread.
class CaptureEngine {
public:
    /// Receives `frameCount * format.channelCount` interleaved samples in `samples`, which are
    /// valid during the call only. Must neither block nor throw.
    using Tap = std::function<void(std::span<const float> samples)>;

    CaptureEngine() = default;
    CaptureEngine(const CaptureEngine&) = delete;
    CaptureEngine& operator=(const CaptureEngine&) = delete;
    /// Stops, and returns only when no tap callback runs any more.
    virtual ~CaptureEngine() = default;

    /// Binds the engine to a device, before `inputFormat`. Throws AudioHostError when there is no
    /// such device; the engine then stays with the system's default.
    virtual void setDevice(std::uint32_t number) = 0;

    /// The device's own rate and channel count; a rate or a count of 0 when there is no device.
    [[nodiscard]] virtual AudioFormat inputFormat() = 0;

    /// How long the system may gather sound before it hands it on, before `start`: the longer, the
    /// fewer wake-ups. One tap's length when never told.
    virtual void setLatency(std::chrono::milliseconds latency) = 0;

    /// From the start of the engine on, `tap` gets every `frameCount` frames, exactly that many at
    /// a time, in the device's own format and without gaps.
    virtual void installTap(std::uint32_t frameCount, Tap tap) = 0;
    /// When this returns, no callback runs and none will.
    virtual void removeTap() = 0;

    /// Called on the main thread, at most once, when a running engine has lost its device or the
    /// sound server. No more buffers come after it.
    virtual void setInterruptionHandler(std::function<void(const std::string& reason)> handler) = 0;

    virtual void prepare() = 0;
    /// Throws AudioHostError. Returns when the stream runs, at the latest after two seconds.
    virtual void start() = 0;
    virtual void stop() = 0;
    [[nodiscard]] virtual bool isRunning() const = 0;
};

/// The microphones of this machine. Main thread only.
class AudioHost {
public:
    AudioHost() = default;
    AudioHost(const AudioHost&) = delete;
    AudioHost& operator=(const AudioHost&) = delete;
    virtual ~AudioHost() = default;

    [[nodiscard]] virtual MicrophoneAuthorization authorizationStatus() = 0;
    /// Asks for the permission; the answer is yes or no.
    [[nodiscard]] virtual Task<bool> requestAccess() = 0;

    /// Every device, in the system's order, those without input channels included. Throws
    /// AudioHostError when the system can't be asked.
    [[nodiscard]] virtual std::vector<AudioDevice> devices() = 0;

    [[nodiscard]] virtual std::unique_ptr<CaptureEngine> makeCaptureEngine() = 0;

    /// A converter between two formats, at the best quality there is; empty when none can be made.
    [[nodiscard]] virtual std::unique_ptr<SampleConverter>
    makeSampleConverter(const AudioFormat& from, const AudioFormat& to) = 0;
};

} // namespace quorvin
