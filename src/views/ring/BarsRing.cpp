#include "views/ring/RingStyles.h"

#include <numbers>

namespace quorvin {

namespace {

constexpr int barCount = 64;

double barLength(const RingFrame& frame, double angle) {
    const double time = frame.time;
    const double level = frame.smoothLevel;
    switch (frame.mode) {
    case RingMode::recording:
        return 35 * level + 8 + 20 * frame.peakLevel +
               10 * level * std::sin(2.5 * time + 5 * angle) +
               6 * level * std::sin(11 * angle - 1.8 * time);
    case RingMode::transcribing:
        return 5 * std::sin(1.5 * time + 4 * angle) + 6 + 3 * std::sin(7 * angle - 1.1 * time);
    case RingMode::idle:
        break;
    }
    return (std::sin(frame.breathPhase) * 0.5 + 0.5) * 4 + 3 +
           2.5 * std::sin(0.4 * time + 3 * angle) + 12 * level;
}

} // namespace

void drawBarsRing(RingPicture& picture, const RingFrame& frame, bool isGlow) {
    const double radius = frame.extent() / 2 - 45;
    picture.strokeCircle(frame.center(), radius, {frame.lineColor(0.3, 0.03 * frame.time), 0.2},
                         0.5);
    for (int i = 0; i < barCount; ++i) {
        const double f = static_cast<double>(i) / barCount;
        const double angle = 2 * std::numbers::pi * f;
        picture.strokeSegment(
            frame.at(angle, radius), frame.at(angle, radius + barLength(frame, angle)),
            {frame.lineColor(f, 0.05 * frame.time), 0.45 * frame.smoothLevel + 0.55},
            isGlow ? 2.5 : 1.8);
    }
}

} // namespace quorvin
