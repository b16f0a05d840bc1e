#include "views/components/SheetGround.h"

#include <QLinearGradient>
#include <QPainter>

namespace quorvin {

SheetGround::SheetGround(QQuickItem* parent) : DrawnItem(parent) {
    connect(this, &SheetGround::lookChanged, this, &QQuickItem::update);
}

PlacedImage SheetGround::drawn(double devicePixelRatio) const {
    if (size().isEmpty()) {
        return {};
    }
    const QSize pixels = (size() * devicePixelRatio).toSize();
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(devicePixelRatio, devicePixelRatio);
    QLinearGradient downward(0, 0, 0, height());
    downward.setColorAt(0, m_topColor);
    downward.setColorAt(1, m_bottomColor);
    painter.setPen(Qt::NoPen);
    painter.setBrush(downward);
    painter.drawRoundedRect(QRectF(QPointF(), size()), m_radius, m_radius);
    painter.setPen(QPen(m_borderColor, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(0.5, 0.5, width() - 1, height() - 1), m_radius - 0.5,
                            m_radius - 0.5);
    painter.end();
    return {image, {QPointF(), QSizeF(pixels) / devicePixelRatio}};
}

} // namespace quorvin
