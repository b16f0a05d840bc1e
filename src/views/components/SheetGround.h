#pragma once

#include "views/components/DrawnItem.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// A rounded panel with a line of one point inside its edges. (A Rectangle with a gradient has
/// jagged corners and no line there where scenes are drawn by software.)
class SheetGround : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor topColor MEMBER m_topColor NOTIFY lookChanged)
    Q_PROPERTY(QColor bottomColor MEMBER m_bottomColor NOTIFY lookChanged)
    Q_PROPERTY(QColor borderColor MEMBER m_borderColor NOTIFY lookChanged)
    /// In points.
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY lookChanged)

public:
    explicit SheetGround(QQuickItem* parent = nullptr);

Q_SIGNALS:
    void lookChanged();

protected:
    [[nodiscard]] PlacedImage drawn(double devicePixelRatio) const override;

private:
    QColor m_topColor;
    QColor m_bottomColor;
    QColor m_borderColor;
    double m_radius = 0;
};

} // namespace quorvin
