#include "models/CompactAnimation.h"

#include <algorithm>
#include <cmath>

namespace quorvin {

double CompactAnimation::smoothedLevel(double smoothed, double level) {
    constexpr double attack = 0.65;
    constexpr double release = 0.08;
    return smoothed + (smoothed < level ? attack : release) * (level - smoothed);
}

void CompactAnimation::stepSpectrum(std::span<double> heights, std::span<const double> bands,
                                    const Random& random) {
    constexpr double floor = 0.06;
    constexpr double rise = 0.65;
    constexpr double fall = 0.42;
    for (std::size_t i = 0; i < heights.size(); ++i) {
        const double band = i < bands.size() ? bands[i] : 0.0;
        const double jitter = random(0.72, 1.28);
        const double target = std::clamp(band * jitter + floor, floor, 1.0);
        const double height = heights[i];
        heights[i] = height + (height < target ? rise : fall) * (target - height);
    }
}

void CompactAnimation::stepWaiting(std::span<double> heights, double elapsed,
                                   const Random& random) {
    constexpr double rate = 0.4;
    for (std::size_t i = 0; i < heights.size(); ++i) {
        const double noise = random(0.0, 0.25);
        const double spark = random(0.0, 1.0) < 0.15 ? random(0.0, 0.4) : 0.0;
        const double wave = std::sin(static_cast<double>(i) * 0.7 + elapsed / 200);
        double target = wave * 0.25 + 0.1 + noise + spark;
        if (random(0.0, 1.0) < 0.1) {
            target = random(0.5, 0.9);
        }
        heights[i] += (target - heights[i]) * rate;
    }
}

} // namespace quorvin
