#pragma once

#include "views/ring/RingPalette.h"

#include <QPointF>
#include <QSizeF>

#include <algorithm>
#include <cmath>

namespace quorvin {

/// All that a figure depends on at one moment.
struct RingFrame {
    QSizeF size; ///< of the surface, in points
    RingMode mode = RingMode::idle;
    double time = 0;
    double smoothLevel = 0; ///< 0 to 1
    double peakLevel = 0;   ///< 0 to 1
    double breathPhase = 0; ///< radians
    bool showImpact = false;
    double impactPhase = 0; ///< 0 to 1
    bool impactIsRecording = false;

    [[nodiscard]] bool isRecording() const { return mode == RingMode::recording; }
    [[nodiscard]] bool isIdle() const { return mode == RingMode::idle; }
    [[nodiscard]] double byMode(double recording, double transcribing, double idle) const {
        return isRecording() ? recording : isIdle() ? idle : transcribing;
    }

    [[nodiscard]] QPointF center() const { return {size.width() / 2, size.height() / 2}; }
    /// The diameter of the greatest circle in the surface.
    [[nodiscard]] double extent() const { return std::min(size.width(), size.height()); }
    /// Clockwise from the right, around the centre.
    [[nodiscard]] QPointF at(double angle, double radius) const {
        return center() + QPointF(radius * std::cos(angle), radius * std::sin(angle));
    }
    [[nodiscard]] QColor lineColor(double lineT, double angle) const {
        return waveLineColor(mode, lineT, angle);
    }
};

} // namespace quorvin
