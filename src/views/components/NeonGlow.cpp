#include "views/components/NeonGlow.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace quorvin {

namespace {

struct Shadow {
    double opacity;
    double radiusFactor;
};

constexpr std::array<Shadow, 3> shadows{{{0.9, 0.5}, {0.55, 1.0}, {0.3, 1.0}}};

/// One channel, row by row, 0 to 1.
struct Plane {
    int width = 0;
    int height = 0;
    std::vector<float> values;
};

Plane planeOf(const QImage& mask) {
    Plane plane{mask.width(), mask.height(), {}};
    plane.values.reserve(static_cast<std::size_t>(plane.width) *
                         static_cast<std::size_t>(plane.height));
    for (int y = 0; y < plane.height; ++y) {
        const uchar* const row = mask.constScanLine(y);
        std::transform(row, row + plane.width, std::back_inserter(plane.values),
                       [](uchar value) { return static_cast<float>(value) / 255; });
    }
    return plane;
}

/// A Gaussian whose reach, two standard deviations, is the radius. Sums to 1.
std::vector<float> gaussian(double radius) {
    const int reach = std::max(static_cast<int>(std::ceil(radius * 1.5)), 1);
    const double sigma = std::max(radius / 2, 0.1);
    std::vector<float> kernel;
    double sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        const double weight = std::exp(-i * i / (2 * sigma * sigma));
        kernel.push_back(static_cast<float>(weight));
        sum += weight;
    }
    for (float& weight : kernel) {
        weight /= static_cast<float>(sum);
    }
    return kernel;
}

/// Blurs along the rows and turns the plane on its side; twice is both ways and upright again.
Plane blurredAndTurned(const Plane& plane, const std::vector<float>& kernel) {
    const int reach = static_cast<int>(kernel.size() / 2);
    Plane result{plane.height, plane.width, std::vector<float>(plane.values.size())};
    for (int y = 0; y < plane.height; ++y) {
        for (int x = 0; x < plane.width; ++x) {
            float sum = 0;
            const int begin = std::max(x - reach, 0);
            const int end = std::min(x + reach + 1, plane.width);
            for (int from = begin; from < end; ++from) {
                sum += plane.values[static_cast<std::size_t>(y * plane.width + from)] *
                       kernel[static_cast<std::size_t>(from - x + reach)];
            }
            result.values[static_cast<std::size_t>(x * result.width + y)] = sum;
        }
    }
    return result;
}

} // namespace

QImage neonGlow(const QImage& mask, const QColor& color, double radius) {
    const Plane shape = planeOf(mask);
    std::vector<float> rest(shape.values.size(), 1.0F); // what shows through the light
    for (const Shadow& shadow : shadows) {
        const std::vector<float> kernel = gaussian(radius * shadow.radiusFactor);
        const Plane blurred = blurredAndTurned(blurredAndTurned(shape, kernel), kernel);
        for (std::size_t i = 0; i < rest.size(); ++i) {
            rest[i] *= 1 - static_cast<float>(shadow.opacity) * blurred.values[i];
        }
    }
    QImage glow(mask.size(), QImage::Format_ARGB32_Premultiplied);
    auto value = rest.cbegin();
    for (int y = 0; y < glow.height(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(glow.scanLine(y));
        for (int x = 0; x < glow.width(); ++x) {
            const int alpha = static_cast<int>(std::lround((1 - *value++) * 255));
            row[x] = qPremultiply(qRgba(color.red(), color.green(), color.blue(), alpha));
        }
    }
    return glow;
}

void NeonGlow::setColor(const QColor& color) {
    if (assign(m_color, color)) {
        update();
    }
}

void NeonGlow::setGlowColor(const QColor& color) {
    if (assign(m_glowColor, color)) {
        update();
    }
}

void NeonGlow::setGlowRadius(double points) {
    if (assign(m_glowRadius, points)) {
        update();
    }
}

PlacedImage NeonGlow::drawn(double devicePixelRatio) const {
    if (size().isEmpty()) {
        return {};
    }
    const double margin = std::ceil(2 * m_glowRadius);
    const QRectF rect = QRectF(QPointF(0, 0), QSizeF(std::ceil(width()), std::ceil(height())))
                            .adjusted(-margin, -margin, margin, margin);
    const QSize pixels = (rect.size() * devicePixelRatio).toSize();
    const auto paint = [&](QImage& image, const QColor& color) {
        QPainter painter(&image);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        painter.scale(devicePixelRatio, devicePixelRatio);
        painter.translate(margin, margin);
        painter.setPen(color);
        painter.setBrush(color);
        paintContent(painter);
    };
    QImage image;
    if (m_glowRadius > 0) {
        QImage mask(pixels, QImage::Format_ARGB32_Premultiplied);
        mask.fill(Qt::transparent);
        paint(mask, Qt::white);
        image = neonGlow(mask.convertToFormat(QImage::Format_Alpha8), m_glowColor,
                         m_glowRadius * devicePixelRatio);
    } else {
        image = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
    }
    paint(image, m_color);
    return {image, rect};
}

} // namespace quorvin
