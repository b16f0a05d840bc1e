#pragma once

#include "views/components/PlacedImage.h"

#include <QQuickItem>

namespace quorvin {

/// An item that shows an image of its own making. `update()` has it drawn anew; otherwise the scene
/// keeps the image, and no more than the image's rectangle is painted.
class DrawnItem : public QQuickItem {
    Q_OBJECT

public:
    explicit DrawnItem(QQuickItem* parent = nullptr);

protected:
    /// The image for now, in the item's coordinates, which it may leave. Whole pixels lie sharp.
    /// Called before a frame, on the main thread.
    [[nodiscard]] virtual PlacedImage drawn(double devicePixelRatio) const = 0;

    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& geometry, const QRectF& before) override;

    /// For the setters of properties that show.
    template <typename Value>
    [[nodiscard]] static bool assign(Value& field, const Value& value) {
        if (field == value) {
            return false;
        }
        field = value;
        return true;
    }
};

} // namespace quorvin
