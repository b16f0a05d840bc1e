#include "views/components/DrawnItem.h"

#include <QQuickWindow>
#include <QSGImageNode>

namespace quorvin {

DrawnItem::DrawnItem(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

QSGNode* DrawnItem::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/) {
    const PlacedImage placed = drawn(window()->effectiveDevicePixelRatio());
    if (placed.image.isNull()) {
        delete node;
        return nullptr;
    }
    auto* imageNode = static_cast<QSGImageNode*>(node);
    if (imageNode == nullptr) {
        imageNode = window()->createImageNode();
        imageNode->setOwnsTexture(true);
    }
    imageNode->setTexture(
        window()->createTextureFromImage(placed.image, QQuickWindow::TextureHasAlphaChannel));
    imageNode->setRect(placed.rect);
    return imageNode;
}

void DrawnItem::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemDevicePixelRatioHasChanged) {
        update();
    }
    QQuickItem::itemChange(change, data);
}

void DrawnItem::geometryChange(const QRectF& geometry, const QRectF& before) {
    if (geometry.size() != before.size()) {
        update();
    }
    QQuickItem::geometryChange(geometry, before);
}

} // namespace quorvin
