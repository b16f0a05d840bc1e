#pragma once

#include "views/ring/RingFrame.h"
#include "views/ring/RingPicture.h"

#include <array>
#include <cstddef>
#include <vector>

namespace quorvin::testing {

using Kind = RingShape::Kind;

struct ExpectedShape {
    std::size_t index;
    Kind kind;
    QPointF first;
    QPointF other; ///< of a path the point after a third of it, of a segment the end, else `first`
    double radius;
    double width;
    double opacity;
    std::array<double, 3> color; ///< 0 to 1
};

/// A figure as a whole. The means weigh the first shape (or point) once, the second twice and so
/// on, so that each and its place in the order counts.
struct FigureDigest {
    std::size_t shapes;
    std::size_t points;
    QPointF meanPoint;
    double meanOpacity;
    double meanRadius;
    double meanWidth;
    std::array<double, 3> meanColor;
};

struct ExpectedFigure {
    const char* style;
    RingMode mode;
    FigureDigest digest;
    std::vector<ExpectedShape> shapes;
};

/// What the numbers were reckoned for, by a program of their own in another language.
[[nodiscard]] inline RingFrame numbersFrame(RingMode mode) {
    return {.size = {320, 300},
            .mode = mode,
            .time = 7.3,
            .smoothLevel = 0.42,
            .peakLevel = 0.57,
            .breathPhase = 1.9};
}

[[nodiscard]] const std::vector<ExpectedFigure>& plainFigures();
[[nodiscard]] const std::vector<ExpectedFigure>& glowFigures();

} // namespace quorvin::testing
