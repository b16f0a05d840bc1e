#pragma once

#include <QColor>
#include <QPointF>

#include <cstddef>
#include <span>
#include <vector>

namespace quorvin {

/// What a shape is painted with.
struct RingInk {
    QColor color; ///< opaque
    double opacity = 1;
};

/// One fill or stroke, in points.
struct RingShape {
    enum class Kind { filledCircle, strokedCircle, segment, closedPath };

    Kind kind = Kind::filledCircle;
    RingInk ink;
    double radius = 0; ///< of a circle
    double width = 0;  ///< of a stroke
    std::size_t firstPoint = 0;
    std::size_t pointCount = 0; ///< 1 of a circle, its centre; 2 of a segment
};

/// Shapes in the order of painting. It can be used again and again and then needs no more memory.
class RingPicture {
public:
    void clear();

    void fillCircle(const QPointF& center, double radius, const RingInk& ink);
    void strokeCircle(const QPointF& center, double radius, const RingInk& ink, double width);
    void strokeSegment(const QPointF& from, const QPointF& to, const RingInk& ink, double width);
    /// Returns the path's points, to be set before the next shape.
    [[nodiscard]] std::span<QPointF> strokeClosedPath(std::size_t pointCount, const RingInk& ink,
                                                      double width);

    [[nodiscard]] const std::vector<RingShape>& shapes() const { return m_shapes; }
    [[nodiscard]] std::span<const QPointF> points(const RingShape& shape) const;

private:
    std::span<QPointF> add(RingShape shape, std::size_t pointCount);

    std::vector<RingShape> m_shapes;
    std::vector<QPointF> m_points; // of all shapes
};

} // namespace quorvin
