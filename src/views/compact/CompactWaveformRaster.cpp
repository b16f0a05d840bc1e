#include "views/compact/CompactWaveformRaster.h"

#include <QRect>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace quorvin {

namespace {

constexpr int slicesPerCornerRow = 2;

constexpr std::uint32_t evenChannels = 0x00ff00ff;

/// Each of the four channels times `factor` / 255, rounded; two at a time.
std::uint32_t scaled(std::uint32_t pixel, std::uint32_t factor) {
    constexpr std::uint32_t half = 0x00800080;
    std::uint32_t even = (pixel & evenChannels) * factor;
    even = ((even + ((even >> 8U) & evenChannels) + half) >> 8U) & evenChannels;
    std::uint32_t odd = ((pixel >> 8U) & evenChannels) * factor;
    odd = (odd + ((odd >> 8U) & evenChannels) + half) & ~evenChannels;
    return even | odd;
}

std::uint32_t byte(double value) {
    return static_cast<std::uint32_t>(value * 255 + 0.5);
}

std::uint32_t opaquePixel(const RgbColor& color) {
    return 255U << 24U | byte(color.red) << 16U | byte(color.green) << 8U | byte(color.blue);
}

/// One pixel, premultiplied, and how much it leaves of what is below it (0 to 255).
struct Ink {
    std::uint32_t pixel;
    std::uint32_t rest;
};

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
        , m_scale(scale)
        , m_width(area.width()) {
        m_image.fill(Qt::transparent);
        m_pixels = m_image.bits();
        m_stride = m_image.bytesPerLine();
        m_coverage.resize(static_cast<std::size_t>(m_width) + 1);
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
    void mixInks(std::uint32_t color, double opacity, int begin, int end);
    void lay(int y, int begin, int end);

    QImage m_image;
    QPointF m_origin;
    double m_scale;
    int m_width;
    uchar* m_pixels = nullptr;
    qsizetype m_stride = 0;
    std::vector<double> m_coverage; ///< of the row at work, by column
    std::vector<Ink> m_inks;
};

void Raster::addSpan(double left, double right, double weight) {
    left = std::max(left, 0.0);
    right = std::min(right, static_cast<double>(m_width));
    if (left >= right) {
        return;
    }
    const auto first = static_cast<std::size_t>(left);
    const auto last = static_cast<std::size_t>(right);
    for (std::size_t x = first; x < last; ++x) {
        m_coverage[x] += weight;
    }
    // The row has one column more than the image, for a span that ends with it.
    m_coverage[first] -= weight * (left - static_cast<double>(first));
    m_coverage[last] += weight * (right - static_cast<double>(last));
}

/// Uses the coverage up.
void Raster::mixInks(std::uint32_t color, double opacity, int begin, int end) {
    for (auto x = static_cast<std::size_t>(begin); x < static_cast<std::size_t>(end); ++x) {
        const std::uint32_t alpha = byte(opacity * m_coverage[x]);
        m_inks[x] = {scaled(color, alpha), 255 - alpha};
        m_coverage[x] = 0;
    }
}

void Raster::lay(int y, int begin, int end) {
    std::uint32_t* const pixels = row(y);
    for (int x = begin; x < end; ++x) {
        const Ink& ink = m_inks[static_cast<std::size_t>(x)];
        pixels[x] = ink.pixel + scaled(pixels[x], ink.rest);
    }
}

void Raster::fill(const WaveformFill& shape) {
    const QPointF topLeft = toPixels(shape.rect.topLeft());
    const QPointF bottomRight = toPixels(shape.rect.bottomRight());
    const double radius =
        std::min({shape.cornerRadius * m_scale, (bottomRight.x() - topLeft.x()) / 2,
                  (bottomRight.y() - topLeft.y()) / 2});
    const int beginX = std::max(static_cast<int>(std::floor(topLeft.x())), 0);
    const int endX = std::min(static_cast<int>(std::ceil(bottomRight.x())), m_width);
    const int beginY = std::max(static_cast<int>(std::floor(topLeft.y())), 0);
    const int endY = std::min(static_cast<int>(std::ceil(bottomRight.y())), m_image.height());

    const std::uint32_t color = opaquePixel(shape.color);
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
        mixInks(color, shape.opacity, beginX, endX);
        lay(y, beginX, endX);
    };

    const int beginStraight =
        std::clamp(static_cast<int>(std::ceil(upperCorner)), beginY, std::max(beginY, endY));
    const int endStraight = std::clamp(static_cast<int>(std::floor(lowerCorner)), beginStraight,
                                       std::max(beginStraight, endY));
    for (int y = beginY; y < beginStraight; ++y) {
        layCornerRow(y);
    }
    if (beginStraight < endStraight) {
        addSpan(topLeft.x(), bottomRight.x(), 1);
        mixInks(color, shape.opacity, beginX, endX);
        for (int y = beginStraight; y < endStraight; ++y) {
            lay(y, beginX, endX);
        }
    }
    for (int y = endStraight; y < endY; ++y) {
        layCornerRow(y);
    }
}

void Raster::stroke(const WaveformDrawing& drawing) {
    const std::uint32_t color = opaquePixel(drawing.lineColor);
    const double left = toPixels(drawing.line.front()).x();
    const double right = toPixels(drawing.line.back()).x();
    std::size_t segment = 0;
    for (int x = 0; x < m_width; ++x) {
        while (segment + 2 < drawing.line.size() &&
               toPixels(drawing.line[segment + 1]).x() < x + 0.5) {
            ++segment;
        }
        const QPointF from = toPixels(drawing.line[segment]);
        const QPointF to = toPixels(drawing.line[segment + 1]);
        const double slope = (to.y() - from.y()) / (to.x() - from.x());
        const double middle = from.y() + (x + 0.5 - from.x()) * slope;
        const double width = overlap(left, right, x, x + 1);
        const double thickness =
            m_scale * std::sqrt(1 + slope * slope); // upright, of a stroke of 1
        for (int y = 0; y < m_image.height(); ++y) {
            double rest = 1;
            for (const WaveformStroke& stroke : drawing.strokes) {
                const double half = stroke.width * thickness / 2;
                rest *=
                    1 - stroke.opacity * width * overlap(middle - half, middle + half, y, y + 1);
            }
            row(y)[x] = scaled(color, byte(1 - rest));
        }
    }
}

} // namespace

PlacedImage rasterized(const WaveformDrawing& drawing, QSizeF size, double devicePixelRatio) {
    const QRectF visible = drawing.bounds() & QRectF(QPointF(0, 0), size);
    if (visible.isEmpty()) {
        return {};
    }
    const QRect area =
        QRectF(visible.topLeft() * devicePixelRatio, visible.size() * devicePixelRatio)
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
