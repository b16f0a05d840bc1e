#include "views/ring/RingPalette.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace quorvin {

namespace {

struct Channels {
    double red;
    double green;
    double blue;
};

/// A part of the palette, which begins with one colour and changes evenly.
struct Ramp {
    double begin;
    double length;
    Channels start;
    Channels change;
};

constexpr std::array recordingRamps{
    Ramp{0.00, 0.33, {1.0, 0.2, 0.4}, {0.0, 0.2, 0.2}},
    Ramp{0.33, 0.33, {1.0, 0.4, 0.6}, {-0.2, -0.1, 0.2}},
    Ramp{0.66, 0.34, {0.8, 0.3, 0.8}, {0.2, -0.1, -0.4}},
};
constexpr std::array transcribingRamps{
    Ramp{0.0, 0.5, {1.0, 0.6, 0.1}, {0.0, 0.2, 0.3}},
    Ramp{0.5, 0.5, {1.0, 0.8, 0.4}, {-0.2, -0.2, -0.3}},
};
constexpr std::array idleRamps{
    Ramp{0.00, 0.33, {0.02, 0.7, 0.95}, {0.2, -0.3, 0.0}},
    Ramp{0.33, 0.33, {0.22, 0.4, 0.95}, {0.35, -0.2, -0.1}},
    Ramp{0.66, 0.34, {0.57, 0.2, 0.85}, {-0.55, 0.5, 0.1}},
};

std::span<const Ramp> ramps(RingMode mode) {
    switch (mode) {
    case RingMode::recording:
        return recordingRamps;
    case RingMode::transcribing:
        return transcribingRamps;
    case RingMode::idle:
        break;
    }
    return idleRamps;
}

} // namespace

QColor waveLineColor(RingMode mode, double lineT, double angle) {
    const double position = lineT + angle;
    double fraction = position - std::trunc(position);
    if (fraction < 0) {
        fraction += 1;
    }
    const std::span<const Ramp> palette = ramps(mode);
    const auto after = std::find_if(palette.begin() + 1, palette.end(),
                                    [fraction](const Ramp& r) { return fraction < r.begin; });
    const Ramp& ramp = *(after - 1);
    const double u = (fraction - ramp.begin) / ramp.length;
    const auto channel = [u](double start, double change) {
        return static_cast<float>(start + change * u);
    };
    return QColor::fromRgbF(channel(ramp.start.red, ramp.change.red),
                            channel(ramp.start.green, ramp.change.green),
                            channel(ramp.start.blue, ramp.change.blue));
}

} // namespace quorvin
