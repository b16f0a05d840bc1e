#include "views/CompactWaveformRaster.h"

#include <QRect>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace quorvin {

namespace {

constexpr int slicesPerCornerRow = 4;

/// One pixel, premultiplied, and how much it leaves of what is below it (0 to 255).
struct Ink {
    std::uint32_t pixel;
    std::uint32_t rest;
};

Ink inked(const RgbColor& color, double alpha) {
    const auto channel = [alpha](double value) {
        return static_cast<std::uint32_t>(std::lround(value * alpha * 255));
    };
    const std::uint32_t opaque = channel(1);
    return {opaque << 24U | channel(color.red) << 16U | channel(color.green) << 8U |
                channel(color.blue),
            255 - opaque};
}

/// Two channels at a time, each divided by 255 with rounding.
std::uint32_t over(const Ink& ink, std::uint32_t below) {
    constexpr std::uint32_t mask = 0x00ff00ff;
    constexpr std::uint32_t roundUp = 0x00800080;
    std::uint32_t even = (below & mask) * ink.rest;
    even = ((even + ((even >> 8U) & mask) + roundUp) >> 8U) & mask;
    std::uint32_t odd = ((below >> 8U) & mask) * ink.rest;
    odd = (odd + ((odd >> 8U) & mask) + roundUp) & ~mask;
    return ink.pixel + (even | odd);
}

/// The length that two intervals share.
double overlap(double begin, double end, double otherBegin, double otherEnd) {
    return std::max(std::min(end, otherEnd) - std::max(begin, otherBegin), 0.0);
}

class Raster {
public:
    /// `area` is in pixels of the canvas.
    Raster(const QRect& area, double scale)
        : m_image(area.size(), QImage::Format_ARGB32_Premultiplied)
        , m_origin(area.topLeft())
        , m_scale(scale) {
        m_image.fill(Qt::transparent);
        m_pixels = m_image.bits();
        m_stride = m_image.bytesPerLine();
        m_coverage.resize(static_cast<std::size_t>(m_image.width()));
        m_inks.resize(m_coverage.size());
    }

    void fill(const WaveformFill& shape);
    void stroke(const WaveformDrawing& drawing);
    [[nodiscard]] QImage image() const { return m_image; }

private:
    [[nodiscard]] std::uint32_t* row(int y) {
        return reinterpret_cast<std::uint32_t*>(m_pixels + y * m_stride);
    }
    [[nodiscard]] QPointF toPixels(const QPointF& point) const {
        return point * m_scale - m_origin;
    }
    void addSpan(double left, double right, double weight);
    void mixInks(const WaveformFill& shape, int begin, int end);
    void lay(int y, int begin, int end);

    QImage m_image;
    QPointF m_origin;
    double m_scale;
    uchar* m_pixels = nullptr;
    qsizetype m_stride = 0;
    std::vector<double> m_coverage; ///< of the row at work, by column
    std::vector<Ink> m_inks;
};

void Raster::addSpan(double left, double right, double weight) {
    const int begin = std::max(static_cast<int>(std::floor(left)), 0);
    const int end = std::min(static_cast<int>(std::ceil(right)), m_image.width());
    for (int x = begin; x < end; ++x) {
        m_coverage[static_cast<std::size_t>(x)] += weight * overlap(left, right, x, x + 1);
    }
}

/// Uses the coverage up.
void Raster::mixInks(const WaveformFill& shape, int begin, int end) {
    for (auto x = static_cast<std::size_t>(begin); x < static_cast<std::size_t>(end); ++x) {
        m_inks[x] = inked(shape.color, shape.opacity * m_coverage[x]);
        m_coverage[x] = 0;
    }
}

void Raster::lay(int y, int begin, int end) {
    std::uint32_t* const pixels = row(y);
    for (int x = begin; x < end; ++x) {
        pixels[x] = over(m_inks[static_cast<std::size_t>(x)], pixels[x]);
    }
}

void Raster::fill(const WaveformFill& shape) {
    const QPointF topLeft = toPixels(shape.rect.topLeft());
    const QPointF bottomRight = toPixels(shape.rect.bottomRight());
    const double radius =
        std::min({shape.cornerRadius * m_scale, (bottomRight.x() - topLeft.x()) / 2,
                  (bottomRight.y() - topLeft.y()) / 2});
    const int beginX = std::max(static_cast<int>(std::floor(topLeft.x())), 0);
    const int endX = std::min(static_cast<int>(std::ceil(bottomRight.x())), m_image.width());
    const int beginY = std::max(static_cast<int>(std::floor(topLeft.y())), 0);
    const int endY = std::min(static_cast<int>(std::ceil(bottomRight.y())), m_image.height());

    const double upperCorner = topLeft.y() + radius;
    const double lowerCorner = bottomRight.y() - radius;
    const auto layCornerRow = [&](int y) {
        constexpr double slice = 1.0 / slicesPerCornerRow;
        for (int i = 0; i < slicesPerCornerRow; ++i) {
            const double begin = std::max(y + i * slice, topLeft.y());
            const double end = std::min(y + (i + 1) * slice, bottomRight.y());
            if (begin >= end) {
                continue;
            }
            const double middle = (begin + end) / 2;
            const double rise = std::max({upperCorner - middle, middle - lowerCorner, 0.0});
            const double inset = radius - std::sqrt(std::max(radius * radius - rise * rise, 0.0));
            addSpan(topLeft.x() + inset, bottomRight.x() - inset, end - begin);
        }
        mixInks(shape, beginX, endX);
        lay(y, beginX, endX);
    };

    const int beginStraight =
        std::clamp(static_cast<int>(std::ceil(upperCorner)), beginY, std::max(beginY, endY));
    const int endStraight =
        std::clamp(static_cast<int>(std::floor(lowerCorner)), beginStraight,
                   std::max(beginStraight, endY));
    for (int y = beginY; y < beginStraight; ++y) {
        layCornerRow(y);
    }
    if (beginStraight < endStraight) {
        addSpan(topLeft.x(), bottomRight.x(), 1);
        mixInks(shape, beginX, endX);
        for (int y = beginStraight; y < endStraight; ++y) {
            lay(y, beginX, endX);
        }
    }
    for (int y = endStraight; y < endY; ++y) {
        layCornerRow(y);
    }
}

void Raster::stroke(const WaveformDrawing& drawing) {
    const double left = toPixels(drawing.line.front()).x();
    const double right = toPixels(drawing.line.back()).x();
    std::size_t segment = 0;
    for (int x = 0; x < m_image.width(); ++x) {
        const double width = overlap(left, right, x, x + 1);
        while (segment + 2 < drawing.line.size() &&
               toPixels(drawing.line[segment + 1]).x() < x + 0.5) {
            ++segment;
        }
        const QPointF from = toPixels(drawing.line[segment]);
        const QPointF to = toPixels(drawing.line[segment + 1]);
        const double slope = (to.y() - from.y()) / (to.x() - from.x());
        const double middle = from.y() + (x + 0.5 - from.x()) * slope;
        const double thickness = m_scale * std::hypot(1.0, slope); // of a stroke of 1, upright
        for (int y = 0; y < m_image.height(); ++y) {
            double rest = 1;
            for (const WaveformStroke& stroke : drawing.strokes) {
                const double half = stroke.width * thickness / 2;
                rest *= 1 - stroke.opacity * width *
                                overlap(middle - half, middle + half, y, y + 1);
            }
            row(y)[x] = inked(drawing.lineColor, 1 - rest).pixel;
        }
    }
}

} // namespace

RasterizedWaveform rasterized(const WaveformDrawing& drawing, QSizeF size,
                              double devicePixelRatio) {
    const QRectF visible = drawing.bounds() & QRectF(QPointF(0, 0), size);
    if (visible.isEmpty()) {
        return {};
    }
    const QRect area = QRectF(visible.topLeft() * devicePixelRatio,
                              visible.size() * devicePixelRatio)
                           .toAlignedRect();
    Raster raster(area, devicePixelRatio);
    for (const WaveformFill& fill : drawing.fills) {
        raster.fill(fill);
    }
    if (drawing.line.size() > 1) {
        raster.stroke(drawing);
    }
    return {raster.image(), QRectF(QPointF(area.topLeft()) / devicePixelRatio,
                                   QSizeF(area.size()) / devicePixelRatio)};
}

} // namespace quorvin
