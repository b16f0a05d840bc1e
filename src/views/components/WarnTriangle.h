#pragma once

#include "views/components/DrawnItem.h"

#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// The sign that something is missing which a take needs.
class WarnTriangle : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT

public:
    explicit WarnTriangle(QQuickItem* parent = nullptr);

protected:
    [[nodiscard]] PlacedImage drawn(double devicePixelRatio) const override;
};

} // namespace quorvin
