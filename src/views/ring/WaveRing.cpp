#include "views/ring/RingStyles.h"

#include <array>
#include <numbers>

namespace quorvin {

namespace {

constexpr double pi = std::numbers::pi;

/// One term of the ripple: weight x sin(or cos)(phase x `phase` + time x `speed` + waves x theta).
struct Ripple {
    double weight;
    int waves; ///< around the circle
    double phase;
    double speed;
    bool isCosine = false;
};

constexpr std::array ripples{
    Ripple{0.35, 5, 1.0, 1.8},        Ripple{0.25, 8, 1.3, -1.3},      Ripple{0.18, 12, 0.7, 2.2},
    Ripple{0.30, 3, 2.0, -0.7},       Ripple{0.20, 7, 1.5, 1.5, true}, Ripple{0.12, 15, 0.4, -2.8},
    Ripple{0.15, 10, 0.9, 1.0, true}, Ripple{0.08, 18, 1.7, -3.0},
};

using Samples = std::array<double, pointsPerLine>;

/// Sines and cosines of the whole multiples of theta at every point of a line.
struct Harmonics {
    Samples cosTheta;
    Samples sinTheta;
    std::array<Samples, ripples.size()> cosines;
    std::array<Samples, ripples.size()> sines;

    Harmonics() {
        fill(1, cosTheta, sinTheta);
        for (std::size_t i = 0; i < ripples.size(); ++i) {
            fill(ripples[i].waves, cosines[i], sines[i]);
        }
    }

private:
    static void fill(int waves, Samples& cosine, Samples& sine) {
        for (std::size_t j = 0; j < pointsPerLine; ++j) {
            const double angle = waves * 2 * pi * static_cast<double>(j) / pointsPerLine;
            cosine[j] = std::cos(angle);
            sine[j] = std::sin(angle);
        }
    }
};

/// The sum of the ripples at every point of a line. By the addition theorems it takes one sine and
/// one cosine for each ripple, instead of one for each point.
void sumRipples(const Harmonics& harmonics, double phase, double time, Samples& sum) {
    sum.fill(0);
    for (std::size_t i = 0; i < ripples.size(); ++i) {
        const Ripple& ripple = ripples[i];
        const double offset =
            ripple.phase * phase + ripple.speed * time + (ripple.isCosine ? pi / 2 : 0);
        const double ofCosine = ripple.weight * std::sin(offset);
        const double ofSine = ripple.weight * std::cos(offset);
        const Samples& cosine = harmonics.cosines[i];
        const Samples& sine = harmonics.sines[i];
        for (std::size_t j = 0; j < pointsPerLine; ++j) {
            sum[j] += ofCosine * cosine[j] + ofSine * sine[j];
        }
    }
}

double amplitude(const RingFrame& frame) {
    return frame.byMode(2 * frame.peakLevel + std::sqrt(std::max(0.01, frame.smoothLevel)) * 6 +
                            1.2,
                        std::sin(0.7 * frame.time) * 2.5 + 5,
                        std::sin(frame.breathPhase) * 0.5 + 0.5 + 0.6 + 2 * frame.smoothLevel);
}

} // namespace

void drawWaveRing(RingPicture& picture, const RingFrame& frame, bool isGlow) {
    static const Harmonics harmonics;
    const double height = amplitude(frame);
    const double time = frame.time * frame.byMode(frame.smoothLevel * 0.25 + 0.4, 0.9, 0.12);
    const QPointF center = frame.center();
    Samples sum;
    for (int i = 0; i < lineCount; ++i) {
        const double f = static_cast<double>(i) / lineCount;
        const double baseRadius = frame.extent() / 2 - 20 - 11 + 22 * f;
        const double middle = 1 - 2 * std::abs(f - 0.5);
        const double opacity =
            middle * 0.55 + 0.15 + (frame.isRecording() ? 0.3 * frame.smoothLevel : 0);
        const auto points = picture.strokeClosedPath(
            pointsPerLine + 1, {frame.lineColor(f, 0.1 * frame.time), std::min(opacity, 1.0)},
            isGlow ? 2 : middle + 0.6);
        sumRipples(harmonics, 0.6 * pi * f, time, sum);
        for (std::size_t j = 0; j < pointsPerLine; ++j) {
            const double radius = baseRadius + height * sum[j];
            points[j] = {center.x() + radius * harmonics.cosTheta[j],
                         center.y() + radius * harmonics.sinTheta[j]};
        }
        points.back() = points.front();
    }
}

} // namespace quorvin
