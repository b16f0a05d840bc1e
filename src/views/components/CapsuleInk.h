#pragma once

#include "views/components/ShadowedInk.h"

#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// A capsule that fills the item: a disc, if that is square.
class CapsuleInk : public ShadowedInk {
    Q_OBJECT
    QML_ELEMENT
    /// Points, of the outline alone; filled at 0.
    Q_PROPERTY(double lineWidth READ lineWidth WRITE setLineWidth)

public:
    using ShadowedInk::ShadowedInk;

    [[nodiscard]] double lineWidth() const { return m_lineWidth; }
    void setLineWidth(double points);

protected:
    void paintShape(QPainter& painter, double devicePixelRatio) const override;

private:
    double m_lineWidth = 0;
};

} // namespace quorvin
