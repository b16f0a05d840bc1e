#pragma once

#include "platform/AudioHost.h"
#include "platform/linux/pulse/PulseConnection.h"
#include "platform/linux/pulse/PulseStream.h"

#include <memory>
#include <optional>
#include <string>

namespace quorvin {

class Scheduler;

/// Takes a record stream from its start to its stop. An engine that starts in the turn of the event
/// loop in which another one on the same device has stopped goes on at the very next sample.
class PulseCaptureEngine final : public CaptureEngine {
public:
    /// All outlive the engine.
    PulseCaptureEngine(PulseConnection& connection, PulseStreams& streams, Scheduler& scheduler);
    ~PulseCaptureEngine() override;

    void setDevice(std::uint32_t number) override;
    [[nodiscard]] AudioFormat inputFormat() override;
    void setLatency(std::chrono::milliseconds latency) override { m_latency = latency; }
    void installTap(std::uint32_t frameCount, Tap tap) override;
    void removeTap() override;
    void setInterruptionHandler(std::function<void(const std::string& reason)> handler) override;
    void prepare() override;
    void start() override;
    void stop() override;
    [[nodiscard]] bool isRunning() const override { return m_running; }

private:
    /// Lives as long as its stream. Held weakly by what the capture thread posts.
    struct StreamToken {};

    void chooseSource(PulseMainloop::Clock::time_point deadline);
    /// Throws AudioHostError, also when the stream isn't there in time.
    void openStream(PulseMainloop::Clock::time_point deadline);
    [[nodiscard]] PulseStream::PieceLength tapLength() const;
    void connectTap();
    void streamChanged();
    void interrupted(const std::string& reason);

    PulseConnection& m_connection;
    PulseStreams& m_streams;
    Scheduler& m_scheduler;
    std::function<void(const std::string& reason)> m_interruptionHandler; // main thread only
    std::optional<std::chrono::milliseconds> m_latency;                   // main thread only

    // The rest under the mainloop's lock. The main thread alone writes `m_source` and `m_running`,
    // so it reads them without.
    std::optional<PulseSource> m_source;
    bool m_running = false;
    std::uint32_t m_tapFrameCount = 1024;
    Tap m_tap;
    std::optional<PulseMainloop::Rest> m_rest; // while it runs
    std::unique_ptr<PulseStream> m_stream;
    std::shared_ptr<StreamToken> m_streamToken;
};

} // namespace quorvin
