#include "views/ring/RingStyles.h"

#include <array>
#include <numbers>

namespace quorvin {

namespace {

struct Comet {
    double offset; ///< of its track, in points
    double recordingSpeed;
    double speedPerLevel; ///< while recording
    double transcribingSpeed;
    double idleSpeed;
    double colorPosition;
    int recordingTail; ///< dots
    int transcribingTail;
    int idleTail;
};

constexpr std::array comets{
    Comet{0, 0.3, 0.15, 0.22, 0.11, 0, 44, 44, 44},
    Comet{-10, 0.22, 0.1, 0.16, 0.08, 0.45, 36, 36, 36},
    Comet{7, 0.18, 0, 0.13, 0.06, 0.72, 26, 22, 14},
};

/// Where a comet is in its frame.
struct Course {
    double speed;
    double radius;
    double colorPosition;
};

void drawTail(RingPicture& picture, const RingFrame& frame, const Course& course, int count,
              bool isGlow) {
    const double time = frame.time;
    for (int k = count - 1; k >= 0; --k) {
        const double fraction = static_cast<double>(k) / count;
        const double angle = time * course.speed - 0.06 * k;
        const double fade = std::pow(1 - fraction, 2.5);
        const double flicker = 0.55 * std::sin(5 * time - 3.5 * std::numbers::pi * fraction) + 1;
        const double radius = flicker * fade * (isGlow ? 4.5 : 2.8) + 0.2;
        const QPointF place = frame.at(angle, course.radius + 3 * std::sin(0.8 * time + 3 * angle));
        picture.fillCircle(place, radius,
                           {frame.lineColor(course.colorPosition, 0.04 * time + 0.1 * fraction),
                            fade * (isGlow ? 0.35 : 0.85)});
    }
}

void drawHead(RingPicture& picture, const RingFrame& frame, const Course& course, bool isGlow) {
    const QPointF place = frame.at(frame.time * course.speed, course.radius);
    const double scale =
        frame.isRecording() ? 0.7 * frame.smoothLevel + 1 + 0.4 * frame.peakLevel : 1;
    const double radius = scale * (isGlow ? 7 : 4.5);
    const QColor color = frame.lineColor(course.colorPosition, 0.04 * frame.time);
    picture.fillCircle(place, 1.8 * radius, {color, isGlow ? 0.15 : 0.25});
    if (!isGlow) {
        // Red and cyan apart, as through a cheap lens.
        const QPointF split(scale * (5 * frame.smoothLevel + 1.8), 0);
        picture.fillCircle(place - split, radius, {Qt::red, 0.45});
        picture.fillCircle(place + split, radius, {Qt::cyan, 0.45});
    }
    picture.fillCircle(place, radius, {color, isGlow ? 0.6 : 1});
}

} // namespace

void drawCometRing(RingPicture& picture, const RingFrame& frame, bool isGlow) {
    const double level = frame.smoothLevel;
    const double swing = frame.byMode(4 * (level + 1), 0, 5 * std::sin(frame.breathPhase));
    for (const Comet& comet : comets) {
        const Course course{
            .speed = frame.byMode(comet.speedPerLevel * level + comet.recordingSpeed,
                                  comet.transcribingSpeed, comet.idleSpeed),
            .radius = frame.extent() / 2 - 28 + comet.offset + swing,
            .colorPosition = comet.colorPosition,
        };
        const double tail = frame.byMode(comet.recordingTail + std::trunc(18 * level),
                                         comet.transcribingTail, comet.idleTail);
        drawTail(picture, frame, course, static_cast<int>(tail), isGlow);
        drawHead(picture, frame, course, isGlow);
    }
}

} // namespace quorvin
