#pragma once

#include "views/components/NeonGlow.h"

#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// A disc that fills its bounds.
class NeonDot : public NeonGlow {
    Q_OBJECT
    QML_ELEMENT

public:
    using NeonGlow::NeonGlow;

protected:
    void paintContent(QPainter& painter) const override;
};

} // namespace quorvin
