#include "views/ring/RingStyles.h"

#include <numbers>

namespace quorvin {

namespace {

constexpr double pi = std::numbers::pi;
constexpr int rayCount = 24;

double rayEnd(const RingFrame& frame, double radius, double f, double angle) {
    const double level = frame.smoothLevel;
    return frame.byMode(
        radius * (0.5 * level + 0.5 + 0.25 * frame.peakLevel) +
            15 * level * std::sin(4 * frame.time + 2 * angle),
        radius * (std::abs(std::sin(1.8 * frame.time + pi * f)) * 0.22 + 0.38),
        0.3 * radius * level +
            radius * ((std::sin(0.7 * pi * f + frame.breathPhase) * 0.5 + 0.5) * 0.14 + 0.28));
}

} // namespace

void drawNovaRing(RingPicture& picture, const RingFrame& frame, bool isGlow) {
    const double level = frame.smoothLevel;
    const double radius = frame.extent() / 2 - 10;
    picture.strokeCircle(frame.center(), radius, {frame.lineColor(0.5, 0.02 * frame.time), 0.12},
                         0.5);
    const double opacity = frame.isRecording() ? 0.6 * level + 0.2 : (isGlow ? 0.25 : 0.15);
    const double width = frame.isRecording() && !isGlow ? 1.5 * level + 1 : 1;
    for (int i = 0; i < rayCount; ++i) {
        const double f = static_cast<double>(i) / rayCount;
        const double angle = 0.04 * frame.time + 2 * pi * f;
        const QPointF tip = frame.at(angle, rayEnd(frame, radius, f, angle));
        const QColor color = frame.lineColor(f, 0.06 * frame.time);
        picture.strokeSegment(frame.at(angle, 8 * level + 12), tip, {color, opacity}, width);
        if (!frame.isIdle() && !isGlow) {
            picture.fillCircle(tip, 2.5 * level + 1.5, {color, 0.8 * opacity});
        }
    }
}

} // namespace quorvin
