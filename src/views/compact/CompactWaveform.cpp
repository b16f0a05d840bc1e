#include "views/compact/CompactWaveform.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quorvin {

namespace waveform {

namespace {

struct ColorStop {
    double t;
    RgbColor color;
};

constexpr std::array<ColorStop, 5> neonStops{{
    {0.00, {0.00, 0.95, 1.00}},
    {0.28, {0.20, 0.55, 1.00}},
    {0.52, {0.65, 0.25, 1.00}},
    {0.76, {0.95, 0.18, 0.95}},
    {1.00, {1.00, 0.24, 0.74}},
}};

constexpr double barMargin = 10;
constexpr double lineMargin = 16;

RgbColor mixed(const RgbColor& from, const RgbColor& to, double fraction) {
    return {std::lerp(from.red, to.red, fraction), std::lerp(from.green, to.green, fraction),
            std::lerp(from.blue, to.blue, fraction)};
}

/// How much of a bar shows while a highlight runs from the left to the right once a second.
double scanned(int bar, double elapsed) {
    const double phase = std::fmod(elapsed / 1000, 1.0);
    const double distance = std::abs(bar / static_cast<double>(barCount) - phase);
    return std::max(1 - 3.5 * distance, 0.0) * 0.6 + 0.3;
}

double barValue(const WaveformState& state, int bar) {
    if (state.barHeights.isEmpty()) {
        return 0;
    }
    double value = state.barHeights[std::min<qsizetype>(bar, state.barHeights.size() - 1)];
    if (state.isTranscribing) {
        value *= scanned(bar, state.elapsed);
    }
    return std::fmin(std::fmax(value, 0.0), 1.0); // 0 for what is not a number
}

void appendBar(std::vector<WaveformFill>& fills, int bar, double value, QSizeF size) {
    const double step = (size.width() - 2 * barMargin) / barCount;
    const double barWidth = std::max(step * 0.42, 1.5);
    const double midY = size.height() * 0.5;
    const double half = std::max(size.height() * 0.46 * value, 2.0);
    const double x = step * 0.5 + step * bar + barMargin - barWidth * 0.5;
    const RgbColor color = mixed({}, neonRGB(bar / (barCount - 1.0)), 0.88 + value * 0.12);

    fills.push_back({{x - barWidth * 1.9, midY - half * 1.3 - 4, barWidth * 4.8, half * 2.6 + 8},
                     barWidth * 2.2,
                     color,
                     0.06 + value * 0.18});
    fills.push_back({{x - barWidth * 0.85, midY - half - 2, barWidth * 2.7, half * 2 + 4},
                     barWidth * 1.35, // round ends
                     color,
                     0.24 + value * 0.34});
    const double roundEnd = barWidth * 0.5;
    fills.push_back({{x, midY - half, barWidth, half * 2}, roundEnd, color, 0.98});

    const RgbColor capColor = mixed(color, {1, 1, 1}, 0.16 + value * 0.55);
    const double capHeight = std::max(half * 0.22, 1.0);
    const double capRadius = std::min(roundEnd, capHeight * 0.5);
    fills.push_back({{x, midY - half, barWidth, capHeight}, capRadius, capColor, 1});
    fills.push_back({{x, midY + half - capHeight, barWidth, capHeight}, capRadius, capColor, 1});
}

WaveformDrawing bars(const WaveformState& state, QSizeF size) {
    WaveformDrawing drawing;
    drawing.fills.reserve(static_cast<std::size_t>(barCount) * fillsPerBar);
    for (int bar = 0; bar < barCount; ++bar) {
        appendBar(drawing.fills, bar, barValue(state, bar), size);
    }
    return drawing;
}

WaveformDrawing idleLine(const WaveformState& state, QSizeF size) {
    WaveformDrawing drawing;
    drawing.line.reserve(linePointCount);
    const double t = state.elapsed / 1000 * 0.9;
    for (int i = 0; i < linePointCount; ++i) {
        const double angle = t + i * 0.07;
        drawing.line.emplace_back(
            (size.width() - 2 * lineMargin) * i / (linePointCount - 1) + lineMargin,
            size.height() * 0.5 + std::sin(angle) * 2.5 + std::sin(angle * 2.1 + 0.4));
    }
    drawing.lineColor = state.accentColor;
    drawing.strokes = {{6.0, 0.05}, {4.0, 0.04}, {1.0, 0.18}};
    return drawing;
}

} // namespace

RgbColor neonRGB(double t) {
    const auto* const above = std::find_if(neonStops.begin() + 1, neonStops.end() - 1,
                                           [t](const ColorStop& stop) { return t <= stop.t; });
    const ColorStop& from = *(above - 1);
    const ColorStop& to = *above;
    const double span = std::max(to.t - from.t, 0.0001);
    return mixed(from.color, to.color, (t - from.t) / span);
}

WaveformDrawing drawing(const WaveformState& state, QSizeF size) {
    return state.isRecording || state.isTranscribing ? bars(state, size) : idleLine(state, size);
}

} // namespace waveform

QRectF WaveformDrawing::bounds() const {
    QRectF bounds;
    for (const WaveformFill& fill : fills) {
        bounds |= fill.rect;
    }
    if (line.empty()) {
        return bounds;
    }
    double halfWidth = 0;
    for (const WaveformStroke& stroke : strokes) {
        halfWidth = std::max(halfWidth, stroke.width / 2);
    }
    const auto [highest, lowest] = std::minmax_element(
        line.begin(), line.end(), [](const QPointF& a, const QPointF& b) { return a.y() < b.y(); });
    return bounds | QRectF(QPointF(line.front().x(), highest->y() - halfWidth),
                           QPointF(line.back().x(), lowest->y() + halfWidth));
}

} // namespace quorvin
