#include "views/ring/RingStyles.h"

#include <numbers>

namespace quorvin {

namespace {

constexpr double pi = std::numbers::pi;
constexpr int trailCount = 24;
constexpr int blipCount = 8;

void drawScope(RingPicture& picture, const RingFrame& frame, double radius) {
    picture.strokeCircle(frame.center(), radius, {frame.lineColor(0.4, 0), 0.25}, 1);
    const QColor color = frame.lineColor(0.3, 0);
    picture.strokeCircle(frame.center(), 0.33 * radius, {color, 0.1}, 0.5);
    picture.strokeCircle(frame.center(), 0.66 * radius, {color, 0.1}, 0.5);
    for (const double angle : {0.0, pi / 2, pi, 3 * pi / 2}) {
        picture.strokeSegment(frame.at(angle, 0.05 * radius), frame.at(angle, radius),
                              {color, 0.08}, 0.5);
    }
}

void drawTrail(RingPicture& picture, const RingFrame& frame, double radius, double sweep,
               bool isGlow) {
    const QColor color = frame.lineColor(0.55, 0.05 * frame.time);
    const double brightest = frame.isRecording() ? 0.35 * frame.smoothLevel + 0.55 : 0.25;
    for (int k = 0; k < trailCount; ++k) {
        const double g = static_cast<double>(k) / trailCount;
        picture.strokeSegment(frame.center(), frame.at(sweep - pi / 2 * g, radius),
                              {color, std::pow(1 - g, 1.8) * brightest}, isGlow ? 3 : 1.5);
    }
}

/// Each lights up when the sweep passes and fades over a third of a turn.
void drawBlips(RingPicture& picture, const RingFrame& frame, double radius, double sweep,
               bool isGlow) {
    const double energy = frame.isRecording() ? frame.smoothLevel + 0.5 * frame.peakLevel : 0.4;
    for (int i = 0; i < blipCount; ++i) {
        const double g = static_cast<double>(i) / blipCount;
        const double angle = 2 * pi * g;
        double passed = std::fmod(sweep - angle, 2 * pi);
        if (passed < 0) {
            passed += 2 * pi;
        }
        const double intensity = 1 - passed / (2 * pi / 3);
        if (intensity > 0) {
            picture.fillCircle(frame.at(angle, radius * (0.7 * g + 0.3)),
                               intensity * (3 * energy + 2.5) * (isGlow ? 1.8 : 1),
                               {frame.lineColor(g, 0.03 * frame.time), 0.9 * intensity});
        }
    }
}

} // namespace

void drawRadarRing(RingPicture& picture, const RingFrame& frame, bool isGlow) {
    const double radius = frame.extent() / 2 - 12;
    // The speed follows the level, so the sweep jumps with it while recording: accepted.
    const double speed = frame.byMode(0.25 * frame.smoothLevel + 0.45, 0.3, 0.18);
    const double sweep = 2 * pi * speed * frame.time;
    const QColor sweepColor = frame.lineColor(0.6, 0.04 * frame.time);

    drawScope(picture, frame, radius);
    drawTrail(picture, frame, radius, sweep, isGlow);
    picture.strokeSegment(frame.center(), frame.at(sweep, radius),
                          {sweepColor, frame.isRecording() ? 0.9 : 0.55}, isGlow ? 4 : 2);
    if (!frame.isIdle()) {
        drawBlips(picture, frame, radius, sweep, isGlow);
    }
    picture.fillCircle(frame.center(), isGlow ? 5 : 3, {sweepColor, 0.8});
}

} // namespace quorvin
