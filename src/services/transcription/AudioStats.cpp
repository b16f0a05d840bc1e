#include "services/transcription/AudioStats.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace quorvin {

AudioStats audioStats(std::span<const float> samples) {
    if (samples.empty()) {
        return {};
    }
    // A compiler may not reorder one floating-point sum; separate ones per lane are what it can
    // turn into vector instructions. In single precision the sum over a minute would be off by 0.1
    // %.
    constexpr std::size_t laneCount = 8;
    std::array<float, laneCount> peaks{};
    std::array<double, laneCount> squares{};
    const auto addBlock = [&](std::span<const float> block) {
        for (std::size_t lane = 0; lane < block.size(); ++lane) {
            const double sample = block[lane];
            peaks[lane] = std::max(peaks[lane], std::abs(block[lane]));
            squares[lane] += sample * sample;
        }
    };
    const std::size_t remainder = samples.size() % laneCount;
    for (std::size_t begin = 0; begin + laneCount <= samples.size(); begin += laneCount) {
        addBlock(samples.subspan(begin).first<laneCount>());
    }
    addBlock(samples.last(remainder));

    const double sum = std::accumulate(squares.begin(), squares.end(), 0.0);
    return {.peak = *std::max_element(peaks.begin(), peaks.end()),
            .rms = static_cast<float>(std::sqrt(sum / static_cast<double>(samples.size())))};
}

} // namespace quorvin
