#include "views/main/LabelInk.h"

#include "theme/SymbolImage.h"

#include <QPainter>
#include <QTextLayout>

#include <cmath>

namespace quorvin {

void LabelInk::setSystemName(const QString& name) {
    if (assign(m_systemName, name)) {
        update();
    }
}

void LabelInk::setSymbolRect(const QRectF& rect) {
    if (assign(m_symbolRect, rect)) {
        update();
    }
}

void LabelInk::setText(const QString& text) {
    if (assign(m_text, text)) {
        update();
    }
}

void LabelInk::setFont(const QFont& font) {
    if (assign(m_font, font)) {
        update();
    }
}

void LabelInk::setTextOrigin(const QPointF& origin) {
    if (assign(m_textOrigin, origin)) {
        update();
    }
}

void LabelInk::paintShape(QPainter& painter, double devicePixelRatio) const {
    const auto pixels = static_cast<int>(std::lround(m_symbolRect.width() * devicePixelRatio));
    painter.drawImage(m_symbolRect, symbolImage(m_systemName, pixels, painter.pen().color()));
    // As a Text lays it out.
    QTextLayout layout(m_text, m_font);
    QTextOption option;
    option.setUseDesignMetrics(true);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    layout.endLayout();
    if (line.isValid()) {
        line.setPosition({0, -line.ascent()});
        layout.draw(&painter, m_textOrigin);
    }
}

} // namespace quorvin
