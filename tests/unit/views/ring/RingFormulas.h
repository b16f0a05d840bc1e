#pragma once

#include "views/ring/RingFrame.h"
#include "views/ring/RingPicture.h"

#include <array>
#include <string>
#include <vector>

namespace quorvin::testing {

using RingColor = std::array<double, 3>; ///< red, green, blue, 0 to 1

/// A fill or stroke as its formula has it, in points.
struct FormulaShape {
    RingShape::Kind kind = RingShape::Kind::filledCircle;
    std::vector<QPointF> points;
    double radius = 0;
    double width = 0;
    double opacity = 0;
    RingColor color{};
};

// The figure once more, straight from its formulas and as slow as they are: shares nothing with
// what draws it but the names of the inputs.

[[nodiscard]] RingColor colorByFormula(RingMode mode, double position);
[[nodiscard]] std::vector<FormulaShape> shapesByFormula(const std::string& style,
                                                        const RingFrame& frame, bool isGlow);

} // namespace quorvin::testing
