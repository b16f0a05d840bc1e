#pragma once

#include "views/components/DrawnItem.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// The blurred image of a rounded rectangle, with a margin of `softShadowMargin` on each side. The
/// radius is how far the blur reaches, two standard deviations of a Gaussian. All in pixels.
/// The shape has to be larger than the corners and the blur of two sides together.
[[nodiscard]] QImage softShadow(QSize shape, double cornerRadius, double radius,
                                const QColor& color);
/// Where less than a hundredth of the shadow is left.
[[nodiscard]] int softShadowMargin(double radius);

/// The shadow, or in a light colour the glow, of a rounded rectangle that has its bounds. It lies
/// below and around it:
///
///     SoftShadow { anchors.fill: card; anchors.topMargin: 10; radius: 24; color: "#80000000" }
class SoftShadow : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    /// With the shadow's opacity.
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /// Of the blur, in points.
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY radiusChanged)
    /// Of the rectangle, in points.
    Q_PROPERTY(
        double cornerRadius READ cornerRadius WRITE setCornerRadius NOTIFY cornerRadiusChanged)

public:
    using DrawnItem::DrawnItem;

    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(const QColor& color);
    [[nodiscard]] double radius() const { return m_radius; }
    void setRadius(double points);
    [[nodiscard]] double cornerRadius() const { return m_cornerRadius; }
    void setCornerRadius(double points);

Q_SIGNALS:
    void colorChanged();
    void radiusChanged();
    void cornerRadiusChanged();

protected:
    [[nodiscard]] PlacedImage drawn(double devicePixelRatio) const override;

private:
    QColor m_color = Qt::black;
    double m_radius = 0;
    double m_cornerRadius = 0;
};

} // namespace quorvin
