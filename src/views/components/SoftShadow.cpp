#include "views/components/SoftShadow.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace quorvin {

namespace {

/// How much of a Gaussian lies below `deviations`.
double gaussianBelow(double deviations) {
    return std::erfc(-deviations / std::numbers::sqrt2) / 2;
}

/// The opacity of the blurred upper left corner of a large shape. Beyond it nothing changes any
/// more along an edge, so the whole shadow is made of it.
class Corner {
public:
    Corner(double cornerRadius, double radius) {
        const double sigma = std::max(radius / 2, 0.1);
        const int margin = softShadowMargin(radius);
        const int roundedRows = static_cast<int>(std::ceil(cornerRadius));
        m_side = roundedRows + 2 * margin;
        // The shape is a stack of rows. Those of the rounding begin further right and are summed
        // up one by one, the others all begin at 0.
        const std::vector<double> straight = edge(0, sigma, margin);
        std::vector<std::vector<double>> rounded;
        for (int row = 0; row < roundedRows; ++row) {
            const double below = cornerRadius - std::min(row + 0.5, cornerRadius);
            const double inset =
                cornerRadius - std::sqrt(cornerRadius * cornerRadius - below * below);
            rounded.push_back(edge(inset, sigma, margin));
        }
        m_opacity.reserve(static_cast<std::size_t>(m_side) * static_cast<std::size_t>(m_side));
        for (int y = 0; y < m_side; ++y) {
            const auto above = [&](int row) {
                return gaussianBelow((y + 0.5 - margin - row) / sigma);
            };
            std::vector<double> line(straight);
            for (double& value : line) {
                value *= above(roundedRows);
            }
            for (int row = 0; row < roundedRows; ++row) {
                const double weight = above(row) - above(row + 1);
                const std::vector<double>& begun = rounded[static_cast<std::size_t>(row)];
                for (std::size_t x = 0; x < line.size(); ++x) {
                    line[x] += weight * begun[x];
                }
            }
            m_opacity.insert(m_opacity.end(), line.begin(), line.end());
        }
    }

    /// `x` and `y` from the outer corner, as far as they go.
    [[nodiscard]] double opacity(int x, int y) const {
        const int column = std::min(x, m_side - 1);
        const int row = std::min(y, m_side - 1);
        return m_opacity[static_cast<std::size_t>(row * m_side + column)];
    }

private:
    /// A blurred row that begins at `inset` and goes on for ever.
    [[nodiscard]] std::vector<double> edge(double inset, double sigma, int margin) const {
        std::vector<double> values;
        for (int x = 0; x < m_side; ++x) {
            values.push_back(gaussianBelow((x + 0.5 - margin - inset) / sigma));
        }
        return values;
    }

    int m_side = 0;
    std::vector<double> m_opacity;
};

} // namespace

int softShadowMargin(double radius) {
    return static_cast<int>(std::ceil(radius * 1.25));
}

QImage softShadow(QSize shape, double cornerRadius, double radius, const QColor& color) {
    const int margin = softShadowMargin(radius);
    QImage image(shape + QSize(2 * margin, 2 * margin), QImage::Format_ARGB32_Premultiplied);
    const Corner corner(cornerRadius, radius);
    for (int y = 0; y < image.height(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y)); // NOLINT
        const int fromEdge = std::min(y, image.height() - 1 - y);
        for (int x = 0; x <= (image.width() - 1) / 2; ++x) {
            const int alpha =
                static_cast<int>(std::lround(color.alphaF() * corner.opacity(x, fromEdge) * 255));
            row[x] = qPremultiply(qRgba(color.red(), color.green(), color.blue(), alpha));
            row[image.width() - 1 - x] = row[x];
        }
    }
    return image;
}

void SoftShadow::setColor(const QColor& color) {
    if (assign(m_color, color)) {
        update();
        Q_EMIT colorChanged();
    }
}

void SoftShadow::setRadius(double points) {
    if (assign(m_radius, points)) {
        update();
        Q_EMIT radiusChanged();
    }
}

void SoftShadow::setCornerRadius(double points) {
    if (assign(m_cornerRadius, points)) {
        update();
        Q_EMIT cornerRadiusChanged();
    }
}

PlacedImage SoftShadow::drawn(double devicePixelRatio) const {
    if (size().isEmpty() || m_color.alpha() == 0) {
        return {};
    }
    const QImage image =
        softShadow((size() * devicePixelRatio).toSize(), m_cornerRadius * devicePixelRatio,
                   m_radius * devicePixelRatio, m_color);
    const double margin = softShadowMargin(m_radius * devicePixelRatio) / devicePixelRatio;
    return {image, QRectF(QPointF(-margin, -margin), QSizeF(image.size()) / devicePixelRatio)};
}

} // namespace quorvin
