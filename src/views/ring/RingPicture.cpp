#include "views/ring/RingPicture.h"

namespace quorvin {

void RingPicture::clear() {
    m_shapes.clear();
    m_points.clear();
}

void RingPicture::fillCircle(const QPointF& center, double radius, const RingInk& ink) {
    add({.kind = RingShape::Kind::filledCircle, .ink = ink, .radius = radius}, 1)[0] = center;
}

void RingPicture::strokeCircle(const QPointF& center, double radius, const RingInk& ink,
                               double width) {
    add({.kind = RingShape::Kind::strokedCircle, .ink = ink, .radius = radius, .width = width},
        1)[0] = center;
}

void RingPicture::strokeSegment(const QPointF& from, const QPointF& to, const RingInk& ink,
                                double width) {
    const auto points = add({.kind = RingShape::Kind::segment, .ink = ink, .width = width}, 2);
    points[0] = from;
    points[1] = to;
}

std::span<QPointF> RingPicture::strokeClosedPath(std::size_t pointCount, const RingInk& ink,
                                                 double width) {
    return add({.kind = RingShape::Kind::closedPath, .ink = ink, .width = width}, pointCount);
}

std::span<const QPointF> RingPicture::points(const RingShape& shape) const {
    return std::span(m_points).subspan(shape.firstPoint, shape.pointCount);
}

std::span<QPointF> RingPicture::add(RingShape shape, std::size_t pointCount) {
    shape.firstPoint = m_points.size();
    shape.pointCount = pointCount;
    m_shapes.push_back(shape);
    m_points.resize(m_points.size() + pointCount);
    return std::span(m_points).last(pointCount);
}

} // namespace quorvin
