#pragma once

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <vector>

namespace quorvin {

/// Channels from 0 to 1.
struct RgbColor {
    double red = 0;
    double green = 0;
    double blue = 0;

    bool operator==(const RgbColor&) const = default;
};

/// What the canvas shows: bars during a take and a transcription, otherwise a line that breathes.
struct WaveformState {
    QList<double> barHeights; ///< nominally 0 to 1
    bool isRecording = false;
    bool isTranscribing = false;
    double elapsed = 0; ///< milliseconds
    RgbColor accentColor;
};

/// A filled rounded rectangle. The corners are arcs: at one or two points a corner of continuous
/// curvature looks the same.
struct WaveformFill {
    QRectF rect;
    double cornerRadius = 0;
    RgbColor color;
    double opacity = 1;
};

/// One stroke along the whole line of a drawing.
struct WaveformStroke {
    double width = 1;
    double opacity = 1;
};

/// In points of the canvas, in the order of painting: the fills, then the strokes.
struct WaveformDrawing {
    std::vector<WaveformFill> fills;
    std::vector<QPointF> line; ///< ascending in x
    RgbColor lineColor;
    std::vector<WaveformStroke> strokes;

    /// The smallest rectangle that holds everything.
    [[nodiscard]] QRectF bounds() const;
};

namespace waveform {

constexpr int barCount = 96; ///< whatever the length of the list
constexpr int fillsPerBar = 5;
constexpr int linePointCount = 65;

/// The colour of a bar at `t`, from 0 at the left to 1 at the right.
[[nodiscard]] RgbColor neonRGB(double t);

/// Each bar is bloom, halo, core, upper cap and lower cap, from the left to the right.
[[nodiscard]] WaveformDrawing drawing(const WaveformState& state, QSizeF size);

} // namespace waveform

} // namespace quorvin
