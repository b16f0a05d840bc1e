#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace quorvin {

/// The last three seconds of a stream of samples at 16 kHz. Not locked; empty until the first
/// `reset`.
class LookbackRing {
public:
    static constexpr std::int64_t keepWarmRingSize = 48000;

    /// Forgets everything and makes room, which `write` needs.
    void reset();
    /// Allocates nothing.
    void write(std::span<const float> samples);
    /// The samples held, oldest first, without the exact zeros in front of the first other value:
    /// a stream often begins with the silence of a device waking up. Empties the ring.
    [[nodiscard]] std::vector<float> drain();

private:
    std::vector<float> m_ring;
    /// Samples written since the last reset, never wrapped: beyond the size, the ring is full.
    std::int64_t m_writePos = 0;
};

} // namespace quorvin
