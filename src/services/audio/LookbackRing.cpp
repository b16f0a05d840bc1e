#include "services/audio/LookbackRing.h"

#include <algorithm>

namespace quorvin {

namespace {

std::size_t slotOf(std::int64_t count) {
    return static_cast<std::size_t>(count % LookbackRing::keepWarmRingSize);
}

} // namespace

void LookbackRing::reset() {
    m_ring.assign(keepWarmRingSize, 0.0F);
    m_writePos = 0;
}

void LookbackRing::write(std::span<const float> samples) {
    for (const float sample : samples) {
        m_ring[slotOf(m_writePos)] = sample;
        ++m_writePos;
    }
}

std::vector<float> LookbackRing::drain() {
    const std::int64_t start = m_writePos - std::min(keepWarmRingSize, m_writePos);
    std::int64_t first = start;
    while (first < m_writePos && m_ring[slotOf(first)] == 0.0F) {
        ++first;
    }
    std::vector<float> samples;
    samples.reserve(static_cast<std::size_t>(m_writePos - first));
    for (std::int64_t count = first; count < m_writePos; ++count) {
        samples.push_back(m_ring[slotOf(count)]);
    }
    m_writePos = 0;
    std::fill(m_ring.begin(), m_ring.end(), 0.0F);
    return samples;
}

} // namespace quorvin
