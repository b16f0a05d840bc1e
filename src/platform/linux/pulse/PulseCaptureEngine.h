#pragma once

#include "platform/AudioHost.h"
#include "platform/linux/pulse/BlockAssembler.h"
#include "platform/linux/pulse/PulseConnection.h"

#include <memory>
#include <optional>
#include <string>

#include <pulse/stream.h>

namespace quorvin {

class Scheduler;

/// A fresh record stream per start, pinned to its source: when the source or the server goes, the
/// stream ends within milliseconds and never moves to another device unasked.
class PulseCaptureEngine final : public CaptureEngine {
public:
    /// Both outlive the engine.
    PulseCaptureEngine(PulseConnection& connection, Scheduler& scheduler);
    ~PulseCaptureEngine() override;

    void setDevice(std::uint32_t number) override;
    [[nodiscard]] AudioFormat inputFormat() override;
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
    void armTap();
    void openStream();
    void closeStream();
    void streamChanged();
    void streamReadable();
    void interrupted(const std::string& reason);

    PulseConnection& m_connection;
    Scheduler& m_scheduler;
    std::function<void(const std::string& reason)> m_interruptionHandler; // main thread only

    // The rest under the mainloop's lock. The main thread alone writes `m_source` and `m_running`,
    // so it reads them without.
    std::optional<PulseSource> m_source;
    bool m_running = false;
    std::uint32_t m_tapFrameCount = 0;
    Tap m_tap;
    std::optional<BlockAssembler> m_blocks;
    pa_stream* m_stream = nullptr;
    std::shared_ptr<StreamToken> m_streamToken;
};

} // namespace quorvin
