#include "views/ring/RingRaster.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quorvin {

namespace {

constexpr double pi = std::numbers::pi;

/// Points of the unit circle, of which smaller polygons take every second, fourth and so on.
constexpr std::size_t finestPolygon = 512;
constexpr std::size_t coarsestPolygon = 16;
/// How far, in pixels, a circle may be from its polygon.
constexpr double tolerance = 0.015;

/// Where the corner of two edges reaches further than this many half widths, it is cut.
constexpr double miterLimit = 10;

const std::array<QPointF, finestPolygon>& unitCircle() {
    static const auto points = [] {
        std::array<QPointF, finestPolygon> circle;
        for (std::size_t i = 0; i < finestPolygon; ++i) {
            const double angle = 2 * pi * static_cast<double>(i) / finestPolygon;
            circle[i] = {std::cos(angle), std::sin(angle)};
        }
        return circle;
    }();
    return points;
}

std::size_t cornersFor(double radius) {
    const double needed = pi / std::sqrt(2 * tolerance / std::max(radius, tolerance));
    std::size_t corners = coarsestPolygon;
    while (corners < finestPolygon && static_cast<double>(corners) < needed) {
        corners *= 2;
    }
    return corners;
}

double squaredLength(const QPointF& vector) {
    return QPointF::dotProduct(vector, vector);
}

/// Of length 1; `edge` has one.
QPointF normalOf(const QPointF& edge) {
    return QPointF(-edge.y(), edge.x()) * (1 / std::sqrt(squaredLength(edge)));
}

} // namespace

QImage RingRaster::painted(const RingPicture& picture, QSizeF size, double devicePixelRatio) {
    const QSizeF pixels = size * devicePixelRatio;
    QImage& image = freeImage({static_cast<int>(std::ceil(pixels.width())),
                               static_cast<int>(std::ceil(pixels.height()))});
    m_coverage.begin(image);
    for (const RingShape& shape : picture.shapes()) {
        const std::span<const QPointF> points = picture.points(shape);
        const double width = shape.width * devicePixelRatio;
        const double radius = shape.radius * devicePixelRatio;
        switch (shape.kind) {
        case RingShape::Kind::filledCircle:
            addCircle(points[0] * devicePixelRatio, radius, Turn::clockwise);
            break;
        case RingShape::Kind::strokedCircle:
            addCircle(points[0] * devicePixelRatio, std::abs(radius) + width / 2, Turn::clockwise);
            addCircle(points[0] * devicePixelRatio, std::max(std::abs(radius) - width / 2, 0.0),
                      Turn::counterclockwise);
            break;
        case RingShape::Kind::segment:
            addSegment(points[0] * devicePixelRatio, points[1] * devicePixelRatio, width);
            break;
        case RingShape::Kind::closedPath:
            addClosedPath(points, devicePixelRatio, width);
            break;
        }
        m_coverage.paint(shape.ink.color, shape.ink.opacity);
    }
    return image;
}

/// One that nothing else holds any more.
QImage& RingRaster::freeImage(QSize size) {
    m_lastImage = 1 - m_lastImage;
    QImage& image = m_images[m_lastImage];
    if (image.size() != size || !image.isDetached()) {
        image = QImage(size, QImage::Format_ARGB32_Premultiplied);
    }
    image.fill(Qt::transparent);
    return image;
}

void RingRaster::addCircle(const QPointF& center, double radius, Turn turn) {
    const std::size_t corners = cornersFor(std::abs(radius));
    const std::size_t step = finestPolygon / corners;
    // As large as the circle.
    const double slice = 2 * pi / static_cast<double>(corners);
    const double reach = radius * std::sqrt(slice / std::sin(slice));
    const double reachDown = turn == Turn::clockwise ? reach : -reach;
    m_polygon.resize(corners);
    for (std::size_t i = 0; i < corners; ++i) {
        const QPointF& direction = unitCircle()[i * step];
        m_polygon[i] = center + QPointF(reach * direction.x(), reachDown * direction.y());
    }
    m_coverage.add(m_polygon);
}

void RingRaster::addSegment(const QPointF& from, const QPointF& to, double width) {
    if (from == to) {
        return;
    }
    const QPointF side = normalOf(to - from) * (width / 2);
    m_polygon = {from + side, to + side, to - side, from - side};
    m_coverage.add(m_polygon);
}

void RingRaster::addClosedPath(std::span<const QPointF> points, double scale, double width) {
    // Without edges that have no length.
    m_path.clear();
    for (const QPointF& point : points) {
        if (m_path.empty() || point * scale != m_path.back()) {
            m_path.push_back(point * scale);
        }
    }
    while (m_path.size() > 1 && m_path.back() == m_path.front()) {
        m_path.pop_back();
    }
    const std::size_t count = m_path.size();
    if (count < 2) {
        return;
    }
    m_polygon.resize(count);
    m_otherSide.resize(count);
    QPointF before = normalOf(m_path.front() - m_path.back());
    for (std::size_t i = 0; i < count; ++i) {
        const QPointF& corner = m_path[i];
        const QPointF after = normalOf(m_path[i + 1 < count ? i + 1 : 0] - corner);
        const double spread =
            std::max(1 + QPointF::dotProduct(before, after), 2 / (miterLimit * miterLimit));
        const QPointF offset = (before + after) * (width / 2 / spread);
        m_polygon[i] = corner + offset;
        m_otherSide[count - 1 - i] = corner - offset;
        before = after;
    }
    m_coverage.add(m_polygon);
    m_coverage.add(m_otherSide);
}

} // namespace quorvin
