#pragma once

#include "views/components/DrawnItem.h"

#include <QColor>

class QPainter;

namespace quorvin {

/// The light around a shape: three shadows of one colour, a narrow strong one and two wide weak
/// ones. `mask` is the shape's opacity (Format_Alpha8) with room for the light around it; the
/// radius, in pixels, is how far the wide ones reach. The result lies under the shape.
[[nodiscard]] QImage neonGlow(const QImage& mask, const QColor& color, double radius);

/// Content of one colour in a neon glow. The light reaches beyond the item's bounds.
class NeonGlow : public DrawnItem {
    Q_OBJECT
    /// Of the content.
    Q_PROPERTY(QColor color READ color WRITE setColor)
    Q_PROPERTY(QColor glowColor READ glowColor WRITE setGlowColor)
    /// Points; no glow at 0.
    Q_PROPERTY(double glowRadius READ glowRadius WRITE setGlowRadius)

public:
    using DrawnItem::DrawnItem;

    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(const QColor& color);
    [[nodiscard]] QColor glowColor() const { return m_glowColor; }
    void setGlowColor(const QColor& color);
    [[nodiscard]] double glowRadius() const { return m_glowRadius; }
    void setGlowRadius(double points);

protected:
    /// In the item's coordinates, with the pen and the brush that are set.
    virtual void paintContent(QPainter& painter) const = 0;

    [[nodiscard]] PlacedImage drawn(double devicePixelRatio) const override;

private:
    QColor m_color = Qt::white;
    QColor m_glowColor = Qt::white;
    double m_glowRadius = 0;
};

} // namespace quorvin
