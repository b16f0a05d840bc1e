#include "views/ring/RingStyles.h"

#include <array>

namespace quorvin {

namespace {

struct Blob {
    double speed;
    double phase;
    double radiusFraction;
    double colorPosition;
};

constexpr std::array blobs{
    Blob{0.09, 0.0, 1.0, 0.0},   Blob{-0.07, 1.2, 0.85, 0.2}, Blob{0.12, 2.5, 0.92, 0.4},
    Blob{-0.10, 3.8, 0.78, 0.6}, Blob{0.08, 5.1, 0.95, 0.8},
};

/// Sizes of a blob's layers, the outermost first. It is invisible, and there is none of 0.2: both
/// deliberate.
constexpr std::array layers{1.0, 0.8, 0.6, 0.4};

} // namespace

void drawPlasmaRing(RingPicture& picture, const RingFrame& frame, bool isGlow) {
    const double time = frame.time;
    const double level = frame.smoothLevel;
    const double energy = frame.isRecording() ? 1.2 * level + 1 + 0.5 * frame.peakLevel : 1;
    const double radius = frame.extent() / 2 - 25;
    const double opacity = frame.isRecording() ? 0.35 * level + 0.25 : 0.18;
    for (const Blob& blob : blobs) {
        const double angle = blob.phase + blob.speed * time;
        const double track = radius * blob.radiusFraction;
        const QPointF place =
            frame.at(angle, track) + QPointF(0.3 * track * std::cos(0.3 * time + 2 * angle),
                                             0.2 * track * std::sin(3 * angle - 0.2 * time));
        const double diameter = (0.15 * std::sin(blob.phase + 1.3 * frame.breathPhase) + 1) *
                                energy * (isGlow ? 48 : 32);
        const QColor color = frame.lineColor(blob.colorPosition, 0.04 * time);
        for (const double layer : layers) {
            picture.fillCircle(place, diameter * layer / 2, {color, opacity * (1 - layer) * 2.5});
        }
    }
    picture.strokeCircle(
        frame.center(), radius,
        {frame.lineColor(0.5, 0.03 * time), frame.isRecording() ? 0.3 * level + 0.3 : 0.15}, 1);
}

} // namespace quorvin
