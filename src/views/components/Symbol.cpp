#include "views/components/Symbol.h"

#include "theme/SymbolImage.h"

#include <QSGImageNode>

#include <algorithm>
#include <cmath>

namespace quorvin {

namespace {

/// The grid of the drawings has 24 units, of which they fill about 20.
constexpr double gridToDrawing = 24.0 / 20.0;

} // namespace

Symbol::Symbol(QQuickItem* parent) : DrawnItem(parent) {}

void Symbol::setName(const QString& name) {
    if (assign(m_name, name)) {
        update();
        Q_EMIT nameChanged();
    }
}

void Symbol::setSize(double size) {
    if (assign(m_size, size)) {
        const double side = std::round(size * gridToDrawing);
        setImplicitSize(side, side);
        Q_EMIT sizeChanged();
    }
}

void Symbol::setColor(const QColor& color) {
    if (assign(m_color, color)) {
        update();
        Q_EMIT colorChanged();
    }
}

PlacedImage Symbol::drawn(double devicePixelRatio) const {
    const double side = std::min(width(), height());
    const auto pixels = static_cast<int>(std::lround(side * devicePixelRatio));
    // On whole pixels, where it is sharp.
    const auto placed = [&](double room) {
        return std::floor((room - side) / 2 * devicePixelRatio) / devicePixelRatio;
    };
    return {
        symbolImage(m_name, pixels, m_color),
        {placed(width()), placed(height()), pixels / devicePixelRatio, pixels / devicePixelRatio}};
}

QSGNode* Symbol::updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) {
    QSGNode* const painted = DrawnItem::updatePaintNode(node, data);
    if (painted != nullptr) {
        // Buttons grow and shrink with their symbols.
        static_cast<QSGImageNode*>(painted)->setFiltering(QSGTexture::Linear);
    }
    return painted;
}

} // namespace quorvin
