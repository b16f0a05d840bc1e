#include "views/components/CapsuleInk.h"

#include <QPainter>

#include <algorithm>

namespace quorvin {

void CapsuleInk::setLineWidth(double points) {
    if (assign(m_lineWidth, points)) {
        update();
    }
}

void CapsuleInk::paintShape(QPainter& painter, double /*devicePixelRatio*/) const {
    if (m_lineWidth > 0) {
        painter.setPen(QPen(painter.pen().color(), m_lineWidth));
        painter.setBrush(Qt::NoBrush);
    } else {
        painter.setPen(Qt::NoPen);
    }
    const double inset = m_lineWidth / 2;
    const QRectF rect = boundingRect().adjusted(inset, inset, -inset, -inset);
    const double radius = std::min(rect.width(), rect.height()) / 2;
    painter.drawRoundedRect(rect, radius, radius);
}

} // namespace quorvin
