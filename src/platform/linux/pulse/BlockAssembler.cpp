#include "platform/linux/pulse/BlockAssembler.h"

#include <algorithm>
#include <utility>

namespace quorvin {

BlockAssembler::BlockAssembler(std::size_t blockSize, Sink sink)
    : m_block(blockSize), m_sink(std::move(sink)) {}

template <typename Fill>
std::size_t BlockAssembler::fillBlock(std::size_t count, Fill fill) {
    const std::size_t taken = std::min(count, m_block.size() - m_filled);
    fill(std::span(m_block).subspan(m_filled, taken));
    m_filled += taken;
    if (m_filled == m_block.size()) {
        m_filled = 0;
        m_sink(m_block);
    }
    return taken;
}

void BlockAssembler::append(std::span<const float> samples) {
    while (!samples.empty()) {
        const std::size_t taken = fillBlock(samples.size(), [samples](std::span<float> room) {
            std::ranges::copy(samples.first(room.size()), room.begin());
        });
        samples = samples.subspan(taken);
    }
}

void BlockAssembler::appendSilence(std::size_t count) {
    while (count > 0) {
        count -= fillBlock(count, [](std::span<float> room) { std::ranges::fill(room, 0.0F); });
    }
}

} // namespace quorvin
