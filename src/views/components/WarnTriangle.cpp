#include "views/components/WarnTriangle.h"

#include <QColor>
#include <QPainter>
#include <QPolygonF>

namespace quorvin {

namespace {

constexpr QSizeF triangleSize(12, 11);
constexpr double strokeWidth = 1.2;
constexpr double fillOpacity = 0.3;
const QColor triangleColor = QColor::fromRgbF(1.0F, 0.85F, 0.1F);

} // namespace

WarnTriangle::WarnTriangle(QQuickItem* parent) : DrawnItem(parent) {
    setImplicitSize(triangleSize.width(), triangleSize.height());
}

PlacedImage WarnTriangle::drawn(double devicePixelRatio) const {
    QImage image((triangleSize * devicePixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(devicePixelRatio, devicePixelRatio);
    painter.setPen(QPen(triangleColor, strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QColor fill = triangleColor;
    fill.setAlphaF(fillOpacity);
    painter.setBrush(fill);
    const double inset = strokeWidth / 2;
    painter.drawPolygon(QPolygonF({{triangleSize.width() / 2, inset},
                                   {triangleSize.width() - inset, triangleSize.height() - inset},
                                   {inset, triangleSize.height() - inset}}));
    return {image, QRectF(QPointF(0, 0), triangleSize)};
}

} // namespace quorvin
