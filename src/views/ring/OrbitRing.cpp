#include "views/ring/RingStyles.h"

#include <array>
#include <numbers>

namespace quorvin {

namespace {

struct Orbit {
    double radius; ///< in a figure of `designRadius`
    double speed;
    int dots;
    double colorPosition;
};

constexpr std::array orbits{
    Orbit{55, 0.12, 8, 0.0},   Orbit{78, -0.08, 6, 0.2}, Orbit{100, 0.06, 10, 0.4},
    Orbit{116, -0.14, 5, 0.6}, Orbit{132, 0.09, 7, 0.8},
};
constexpr double designRadius = 140;
constexpr double outermost = orbits.back().radius;

} // namespace

void drawOrbitRing(RingPicture& picture, const RingFrame& frame, bool isGlow) {
    const double level = frame.smoothLevel;
    const double scale = frame.extent() / 2 / designRadius;
    const double expansion = 16 * level + 8 * frame.peakLevel;
    const double opacity = frame.isRecording() ? 0.4 * level + 0.6 : (isGlow ? 0.35 : 0.65);
    for (const Orbit& orbit : orbits) {
        const double radius = scale * (orbit.radius + orbit.radius / outermost * expansion);
        picture.strokeCircle(frame.center(), radius,
                             {frame.lineColor(orbit.colorPosition, 0), 0.07}, 0.5);
        for (int j = 0; j < orbit.dots; ++j) {
            const QPointF place =
                frame.at(frame.time * orbit.speed + 2 * std::numbers::pi * j / orbit.dots, radius);
            const double factor = frame.isRecording()
                                      ? 0.9 * level + 1 + 0.4 * frame.peakLevel
                                      : 0.3 * std::sin(0.7 * j + frame.breathPhase) + 1;
            const double dotRadius = factor * (isGlow ? 4 : 2.5);
            const QColor color = frame.lineColor(orbit.colorPosition, 0.04 * frame.time + 0.05 * j);
            picture.fillCircle(place, 2 * dotRadius, {color, 0.2 * opacity});
            picture.fillCircle(place, dotRadius, {color, opacity});
        }
    }
}

} // namespace quorvin
