#include "views/components/NeonText.h"

#include "theme/MonospacedDigits.h"

#include <QPainter>
#include <QTextOption>

#include <cmath>

namespace quorvin {

void NeonText::setText(const QString& text) {
    if (text != m_layout.text()) {
        m_layout.setText(text);
        layOut();
        Q_EMIT textChanged();
    }
}

void NeonText::setFont(const QFont& font) {
    if (font != m_layout.font()) {
        m_layout.setFont(font);
        layOut();
        Q_EMIT fontChanged();
    }
}

void NeonText::layOut() {
    QTextOption option;
    option.setUseDesignMetrics(true);
    m_layout.setTextOption(option);
    m_layout.setFormats(monospacedDigits(m_layout.text(), m_layout.font()));
    m_layout.beginLayout();
    QTextLine line = m_layout.createLine();
    m_layout.endLayout();
    if (line.isValid()) {
        line.setPosition({0, std::round(line.ascent()) - line.ascent()}); // on a whole pixel
        setImplicitSize(std::ceil(line.naturalTextWidth()), std::ceil(line.height()));
        setBaselineOffset(std::round(line.ascent()));
    }
    update();
}

void NeonText::paintContent(QPainter& painter) const {
    m_layout.draw(&painter, {0, 0});
}

} // namespace quorvin
