#pragma once

#include "views/components/DrawnItem.h"

#include <QColor>

class QPainter;

namespace quorvin {

/// A shape in one colour, or in a gradient from the item's top left to its bottom right. A soft
/// shadow lies around it, beyond the item's bounds, but not under it, where a translucent shape
/// would let it through.
class ShadowedInk : public DrawnItem {
    Q_OBJECT
    Q_PROPERTY(QColor color READ color WRITE setColor)
    /// Of the bottom right; without one it's all in `color`.
    Q_PROPERTY(QColor endColor READ endColor WRITE setEndColor)
    Q_PROPERTY(QColor shadowColor READ shadowColor WRITE setShadowColor)
    /// Points; no shadow at 0.
    Q_PROPERTY(double shadowRadius READ shadowRadius WRITE setShadowRadius)
    /// Points, downwards.
    Q_PROPERTY(double shadowOffset READ shadowOffset WRITE setShadowOffset)

public:
    using DrawnItem::DrawnItem;

    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(const QColor& color);
    [[nodiscard]] QColor endColor() const { return m_endColor; }
    void setEndColor(const QColor& color);
    [[nodiscard]] QColor shadowColor() const { return m_shadowColor; }
    void setShadowColor(const QColor& color);
    [[nodiscard]] double shadowRadius() const { return m_shadowRadius; }
    void setShadowRadius(double points);
    [[nodiscard]] double shadowOffset() const { return m_shadowOffset; }
    void setShadowOffset(double points);

protected:
    /// In the item's coordinates, with the pen and the brush that are set.
    virtual void paintShape(QPainter& painter, double devicePixelRatio) const = 0;

    [[nodiscard]] PlacedImage drawn(double devicePixelRatio) const override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

private:
    /// What lies around a shape, given as its opacity (Format_Alpha8).
    [[nodiscard]] QImage shadowOf(const QImage& shape, double devicePixelRatio) const;

    QColor m_color = Qt::white;
    QColor m_endColor;
    QColor m_shadowColor = Qt::black;
    double m_shadowRadius = 0;
    double m_shadowOffset = 0;
};

} // namespace quorvin
