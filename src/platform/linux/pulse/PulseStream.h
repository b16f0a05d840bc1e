#pragma once

#include "platform/linux/pulse/BlockAssembler.h"
#include "platform/linux/pulse/PulseConnection.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <pulse/stream.h>

namespace quorvin {

class Scheduler;

/// A record stream, pinned to its source: when the source or the server goes, the stream ends at
/// once, or with the mainloop's rest, and never moves to another device unasked. Samples that
/// nobody takes wait in it.
///
/// Everything under the mainloop's lock, with a connection that is there.
class PulseStream {
public:
    /// What the server gathers before it sends.
    using PieceLength = std::chrono::microseconds;

    /// Asks the server for it. Throws AudioHostError.
    PulseStream(PulseConnection& connection, const PulseSource& source, PieceLength length);
    /// Ends it; no callback runs any more.
    ~PulseStream();
    PulseStream(const PulseStream&) = delete;
    PulseStream& operator=(const PulseStream&) = delete;

    [[nodiscard]] pa_stream_state_t state() const { return pa_stream_get_state(m_stream); }
    [[nodiscard]] bool isFor(const PulseSource& source) const;

    /// The server follows soon, with what it has gathered by then.
    void setPieceLength(PieceLength length);

    /// Calls `changed` on the capture thread with every change of the state.
    void setStateHandler(std::function<void()> changed) { m_changed = std::move(changed); }
    /// Hands all samples, interleaved, from where the last taker was left, to `sink` on the capture
    /// thread, `frameCount` frames at a time.
    void deliver(std::uint32_t frameCount, BlockAssembler::Sink sink);
    /// What comes from now on waits for the next `deliver`.
    void hold();

private:
    void readable();

    PulseSource m_source;
    PieceLength m_pieceLength;
    pa_stream* m_stream;
    std::function<void()> m_changed;
    std::optional<BlockAssembler> m_blocks;
    std::vector<float> m_leftOver; ///< read for a taker that was gone before its block was full
};

/// Opens record streams. The stream that one engine leaves is kept for the engine that starts next,
/// within the same turn of the main thread's event loop: so no sound is lost between the two,
/// however long the server's pieces are.
///
/// Main thread, under the mainloop's lock.
class PulseStreams {
public:
    /// Both outlive it.
    PulseStreams(PulseConnection& connection, Scheduler& scheduler);

    /// Throws AudioHostError. The stream is on its way, or ready when one was left.
    [[nodiscard]] std::unique_ptr<PulseStream> open(const PulseSource& source,
                                                    PulseStream::PieceLength length);
    void leave(std::unique_ptr<PulseStream> stream);

private:
    struct Left {
        std::unique_ptr<PulseStream> stream;
    };

    PulseConnection& m_connection;
    Scheduler& m_scheduler;
    std::shared_ptr<Left> m_left; ///< held weakly by what waits for the turn's end
};

} // namespace quorvin
