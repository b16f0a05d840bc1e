#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace quorvin {

/// Cuts a stream of samples, which comes in pieces of any size, into blocks of one size. Allocates
/// at construction only. One thread at a time.
class BlockAssembler {
public:
    /// Receives exactly `blockSize` samples, valid during the call only.
    using Sink = std::function<void(std::span<const float> block)>;

    /// `blockSize` in samples, above 0.
    BlockAssembler(std::size_t blockSize, Sink sink);

    /// Hands on every block that `samples` completes; the rest waits for the next call.
    void append(std::span<const float> samples);
    /// The same with `count` samples of silence.
    void appendSilence(std::size_t count);

    /// What waits for the rest of its block; valid until the next call.
    [[nodiscard]] std::span<const float> leftOver() const {
        return std::span(m_block).first(m_filled);
    }

private:
    /// Lets `fill` write up to `count` samples into the block and hands it on when it is full.
    /// Returns how many were written.
    template <typename Fill>
    std::size_t fillBlock(std::size_t count, Fill fill);

    std::vector<float> m_block;
    std::size_t m_filled = 0;
    Sink m_sink;
};

} // namespace quorvin
