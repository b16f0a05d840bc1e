#pragma once

#include "views/ring/CoverageRaster.h"
#include "views/ring/RingPicture.h"

#include <QImage>
#include <QSizeF>

#include <array>
#include <vector>

namespace quorvin {

/// Paints pictures. It keeps the memory of two images, for the one that is shown while the next is
/// painted.
class RingRaster {
public:
    /// A new image of that size, in points, with the picture on nothing; cut off at its edges.
    [[nodiscard]] QImage painted(const RingPicture& picture, QSizeF size, double devicePixelRatio);

private:
    enum class Turn { clockwise, counterclockwise };

    QImage& freeImage(QSize size);
    // To the shape at work, in pixels.
    void addCircle(const QPointF& center, double radius, Turn turn);
    void addSegment(const QPointF& from, const QPointF& to, double width);
    /// The points are in points, `scale` pixels each.
    void addClosedPath(std::span<const QPointF> points, double scale, double width);

    std::array<QImage, 2> m_images;
    std::size_t m_lastImage = 0;
    CoverageRaster m_coverage;
    std::vector<QPointF> m_path;
    std::vector<QPointF> m_polygon;
    std::vector<QPointF> m_otherSide; // of the path
};

} // namespace quorvin
