#include "views/components/ShadowedInk.h"

#include "views/components/GaussianBlur.h"

#include <QLinearGradient>
#include <QPainter>
#include <QSGImageNode>

#include <cmath>

namespace quorvin {

void ShadowedInk::setColor(const QColor& color) {
    if (assign(m_color, color)) {
        update();
    }
}

void ShadowedInk::setEndColor(const QColor& color) {
    if (assign(m_endColor, color)) {
        update();
    }
}

void ShadowedInk::setShadowColor(const QColor& color) {
    if (assign(m_shadowColor, color)) {
        update();
    }
}

void ShadowedInk::setShadowRadius(double points) {
    if (assign(m_shadowRadius, points)) {
        update();
    }
}

void ShadowedInk::setShadowOffset(double points) {
    if (assign(m_shadowOffset, points)) {
        update();
    }
}

PlacedImage ShadowedInk::drawn(double devicePixelRatio) const {
    if (size().isEmpty()) {
        return {};
    }
    constexpr double shadowReach = 1.5; // in radii
    const double margin =
        m_shadowRadius > 0 ? std::ceil(m_shadowRadius * shadowReach + std::abs(m_shadowOffset)) : 0;
    const QRectF rect = QRectF(QPointF(0, 0), QSizeF(std::ceil(width()), std::ceil(height())))
                            .adjusted(-margin, -margin, margin, margin);
    QImage image((rect.size() * devicePixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(devicePixelRatio, devicePixelRatio);
    painter.translate(margin, margin);
    painter.setPen(Qt::white);
    painter.setBrush(Qt::white);
    paintShape(painter, devicePixelRatio);
    const QImage shape = image.convertToFormat(QImage::Format_Alpha8);
    QLinearGradient gradient(boundingRect().topLeft(), boundingRect().bottomRight());
    gradient.setColorAt(0, m_color);
    gradient.setColorAt(1, m_endColor.isValid() ? m_endColor : m_color);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(rect, gradient);
    if (m_shadowRadius > 0) {
        painter.resetTransform();
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
        painter.drawImage(0, 0, shadowOf(shape, devicePixelRatio));
    }
    return {image, rect};
}

QImage ShadowedInk::shadowOf(const QImage& shape, double devicePixelRatio) const {
    QImage shadow(shape.size(), QImage::Format_ARGB32_Premultiplied);
    shadow.fill(Qt::transparent);
    QPainter painter(&shadow);
    painter.drawImage(0, static_cast<int>(std::lround(m_shadowOffset * devicePixelRatio)),
                      gaussianBlur(shape, m_shadowRadius * devicePixelRatio));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(shadow.rect(), m_shadowColor);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.drawImage(0, 0, shape);
    return shadow;
}

QSGNode* ShadowedInk::updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) {
    QSGNode* const painted = DrawnItem::updatePaintNode(node, data);
    if (painted != nullptr) {
        // Controls grow and shrink with it.
        static_cast<QSGImageNode*>(painted)->setFiltering(QSGTexture::Linear);
    }
    return painted;
}

} // namespace quorvin
