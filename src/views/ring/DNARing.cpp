#include "views/ring/RingStyles.h"

#include <numbers>

namespace quorvin {

namespace {

constexpr double pi = std::numbers::pi;
constexpr int nodeCount = 32;
constexpr int nodesPerRung = 4;

struct Helix {
    double rotation;
    double radius; ///< of the circle that it is laid around
};

struct Strand {
    double angleOffset;
    double colorOffset;
    bool hasRungs;
};

double twistAt(const Helix& helix, double g) {
    return 2 * helix.rotation + 4 * pi * g;
}

double angleAt(const Helix& helix, const Strand& strand, double g) {
    return strand.angleOffset + helix.rotation + 2 * pi * g;
}

double recordingSwing(const RingFrame& frame) {
    return 22 * frame.smoothLevel + 18;
}

void drawStrand(RingPicture& picture, const RingFrame& frame, const Helix& helix,
                const Strand& strand, bool isGlow) {
    const double zoom =
        frame.isRecording() ? 0.9 * frame.smoothLevel + 1 + 0.4 * frame.peakLevel : 1;
    for (int i = 0; i < nodeCount; ++i) {
        const double g = static_cast<double>(i) / nodeCount;
        const double lift = std::sin(twistAt(helix, g));
        const double displacement =
            lift * (frame.isRecording() ? recordingSwing(frame)
                                        : 5 * std::sin(pi * g + frame.breathPhase) + 12);
        const double angle = angleAt(helix, strand, g);
        const QPointF node = frame.at(angle, helix.radius + displacement);
        const double depth = (lift + 1) * 0.5;
        const double nodeRadius = (0.6 * depth + 0.4) * (isGlow ? 5 : 3) * zoom;
        const QColor color = frame.lineColor(strand.colorOffset + g, 0.05 * frame.time);
        const double opacity = (0.65 * depth + 0.35) * (isGlow ? 0.4 : 0.85);
        if (isGlow) {
            picture.fillCircle(node, 2 * nodeRadius, {color, 0.3 * opacity});
        }
        picture.fillCircle(node, nodeRadius, {color, opacity});

        if (i > 0) {
            const double before = static_cast<double>(i - 1) / nodeCount;
            // At rest without the breath, so that the segments miss the nodes a little: deliberate.
            const double swing = frame.isRecording() ? recordingSwing(frame) : 12;
            const double radius = helix.radius + std::sin(twistAt(helix, before)) * swing;
            picture.strokeSegment(frame.at(angleAt(helix, strand, before), radius), node,
                                  {color, 0.4 * opacity}, isGlow ? 1.5 : 0.8);
        }
        if (strand.hasRungs && i % nodesPerRung == 0) {
            picture.strokeSegment(node, frame.at(angle + pi, helix.radius - displacement),
                                  {color, 0.15}, 0.6);
        }
    }
}

} // namespace

void drawDNARing(RingPicture& picture, const RingFrame& frame, bool isGlow) {
    const Helix helix{
        .rotation = frame.byMode(0.15 * frame.smoothLevel + 0.22, 0.14, 0.07) * frame.time,
        .radius = frame.extent() / 2 - 30,
    };
    drawStrand(picture, frame, helix, {.angleOffset = 0, .colorOffset = 0, .hasRungs = true},
               isGlow);
    drawStrand(picture, frame, helix, {.angleOffset = pi, .colorOffset = 0.5, .hasRungs = false},
               isGlow);
}

} // namespace quorvin
