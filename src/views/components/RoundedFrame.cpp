#include "views/components/RoundedFrame.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace quorvin {

RoundedFrame::RoundedFrame(QQuickItem* parent) : DrawnItem(parent) {
    connect(this, &RoundedFrame::lookChanged, this, &QQuickItem::update);
}

PlacedImage RoundedFrame::drawn(double devicePixelRatio) const {
    if (size().isEmpty()) {
        return {};
    }
    // Whole points of air on each side, so that pixels stay on pixels.
    const double growth = std::max(0.0, m_magnification - 1) / 2;
    const QSizeF air(std::ceil(width() * growth), std::ceil(height() * growth));
    const QSize pixels = ((size() + 2 * air) * devicePixelRatio).toSize();
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(devicePixelRatio, devicePixelRatio);
    painter.translate(air.width() + width() / 2, air.height() + height() / 2);
    painter.scale(m_magnification, m_magnification);
    painter.translate(-width() / 2, -height() / 2);

    const QRectF edges(QPointF(), size());
    QLinearGradient downward(edges.topLeft(), edges.bottomLeft());
    downward.setColorAt(0, m_fill);
    downward.setColorAt(1, m_bottomFill.isValid() ? m_bottomFill : m_fill);
    painter.setPen(Qt::NoPen);
    painter.setBrush(downward);
    painter.drawRoundedRect(edges, m_radius, m_radius);
    const double half = m_lineWidth / 2;
    QPen pen(m_color, m_lineWidth, Qt::SolidLine, Qt::FlatCap);
    if (m_dash > 0) {
        pen.setDashPattern({m_dash / m_lineWidth, m_gap / m_lineWidth}); // in widths of the line
    }
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(edges.adjusted(half, half, -half, -half), m_radius - half,
                            m_radius - half);
    painter.end();
    return {image, {QPointF(-air.width(), -air.height()), QSizeF(pixels) / devicePixelRatio}};
}

} // namespace quorvin
