#include "views/components/NeonDot.h"

#include <QPainter>

namespace quorvin {

void NeonDot::paintContent(QPainter& painter) const {
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(boundingRect());
}

} // namespace quorvin
