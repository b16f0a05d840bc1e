#pragma once

#include "views/components/DrawnItem.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// A rectangle with round corners and a line inside its edges, which can be dashed. (Where scenes
/// are drawn by software, a Rectangle with a gradient has jagged corners and no line there, and one
/// that is scaled comes apart at them.) All lengths in points.
class RoundedFrame : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor fill MEMBER m_fill NOTIFY lookChanged)
    /// At the bottom, where `fill` fades into it; without one it's all `fill`.
    Q_PROPERTY(QColor bottomFill MEMBER m_bottomFill NOTIFY lookChanged)
    /// Of the line.
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY lookChanged)
    Q_PROPERTY(double lineWidth MEMBER m_lineWidth NOTIFY lookChanged)
    /// 0 for a line without gaps.
    Q_PROPERTY(double dash MEMBER m_dash NOTIFY lookChanged)
    Q_PROPERTY(double gap MEMBER m_gap NOTIFY lookChanged)
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY lookChanged)
    /// About the middle, beyond the item's own edges.
    Q_PROPERTY(double magnification MEMBER m_magnification NOTIFY lookChanged)

public:
    explicit RoundedFrame(QQuickItem* parent = nullptr);

Q_SIGNALS:
    void lookChanged();

protected:
    [[nodiscard]] PlacedImage drawn(double devicePixelRatio) const override;

private:
    QColor m_fill = Qt::transparent;
    QColor m_bottomFill;
    QColor m_color = Qt::transparent;
    double m_lineWidth = 1;
    double m_dash = 0;
    double m_gap = 0;
    double m_radius = 0;
    double m_magnification = 1;
};

} // namespace quorvin
