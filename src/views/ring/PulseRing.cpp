#include "views/ring/RingStyles.h"

#include <numbers>

namespace quorvin {

namespace {

constexpr int mostRings = 12;
constexpr int wobbleSegments = 64;
constexpr double faintestOpacity = 0.01;

} // namespace

void drawPulseRing(RingPicture& picture, const RingFrame& frame, bool isGlow) {
    const double level = frame.smoothLevel;
    const int count =
        static_cast<int>(std::fmin(std::trunc(5 * level) + 7, static_cast<double>(mostRings)));
    const double speed = frame.byMode(0.14, 0.08, 0.04) + 0.12 * level;
    const double outerRadius = frame.extent() / 2 - 12;
    for (int i = 0; i < count; ++i) {
        const double g = static_cast<double>(i) / count;
        const double phase = frame.time * speed + g;
        const double life = 1 - (phase - std::trunc(phase));
        const double opacity = std::pow(life, 1.3) *
                               (frame.isRecording() ? 0.3 * level + 0.55 : 0.55) *
                               (isGlow ? 0.65 : 1);
        if (opacity < faintestOpacity) {
            continue;
        }
        const double radius =
            outerRadius * (1 - std::pow(life, 2.2)) + (frame.isRecording() ? life * 18 * level : 0);
        const double width = isGlow ? life * 5 + 1.5 : life * 3 + 0.5;
        const RingInk ink{frame.lineColor(g, 0.04 * frame.time), opacity};
        if (!frame.isRecording() || level <= 0.1) {
            picture.strokeCircle(frame.center(), radius, ink, width);
            continue;
        }
        const auto points = picture.strokeClosedPath(wobbleSegments + 1, ink, width);
        for (std::size_t j = 0; j < points.size(); ++j) {
            const double theta = 2 * std::numbers::pi * static_cast<double>(j) / wobbleSegments;
            points[j] =
                frame.at(theta, radius + 10 * level * std::sin(2 * g + 3 * frame.time + 4 * theta));
        }
    }
}

} // namespace quorvin
