#include "views/Symbol.h"

#include "theme/SymbolImage.h"

#include <QPainter>
#include <QQuickWindow>

#include <algorithm>
#include <cmath>

namespace quorvin {

Symbol::Symbol(QQuickItem* parent) : QQuickPaintedItem(parent) {}

void Symbol::setName(const QString& name) {
    if (name != m_name) {
        m_name = name;
        update();
        Q_EMIT nameChanged();
    }
}

void Symbol::setColor(const QColor& color) {
    if (color != m_color) {
        m_color = color;
        update();
        Q_EMIT colorChanged();
    }
}

void Symbol::paint(QPainter* painter) {
    const double ratio = window() ? window()->effectiveDevicePixelRatio() : 1.0;
    const double side = std::min(width(), height());
    const QRectF square((width() - side) / 2, (height() - side) / 2, side, side);
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(square,
                       symbolImage(m_name, static_cast<int>(std::lround(side * ratio)), m_color));
}

} // namespace quorvin
