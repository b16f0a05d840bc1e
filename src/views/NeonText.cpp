#include "views/NeonText.h"

#include "support/Text.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace quorvin {

namespace {

bool isDigit(const QString& character) {
    return character.size() == 1 && character.front() >= u'0' && character.front() <= u'9';
}

double widestDigit(const QFontMetricsF& metrics) {
    double width = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
        width = std::max(width, metrics.horizontalAdvance(QChar(digit)));
    }
    return width;
}

/// A piece of the line in its room: one digit, or what stands between digits.
struct Piece {
    QString text;
    double x = 0;
};

struct Line {
    std::vector<Piece> pieces;
    double width = 0;
};

Line laidOut(const QString& text, const QFontMetricsF& metrics) {
    Line line;
    const double digitWidth = widestDigit(metrics);
    QString words;
    const auto endWords = [&] {
        if (!words.isEmpty()) {
            line.pieces.push_back({words, line.width});
            line.width += metrics.horizontalAdvance(words);
            words.clear();
        }
    };
    for (const QString& character : text::characters(text)) {
        if (!isDigit(character)) {
            words += character;
            continue;
        }
        endWords();
        const double margin = (digitWidth - metrics.horizontalAdvance(character)) / 2;
        line.pieces.push_back({character, line.width + margin});
        line.width += digitWidth;
    }
    endWords();
    return line;
}

} // namespace

NeonText::NeonText(QQuickItem* parent) : NeonGlow(parent) {
    measure();
}

void NeonText::setText(const QString& text) {
    if (assign(m_text, text)) {
        measure();
        Q_EMIT textChanged();
    }
}

void NeonText::setFont(const QFont& font) {
    if (assign(m_font, font)) {
        measure();
        Q_EMIT fontChanged();
    }
}

void NeonText::measure() {
    const QFontMetricsF metrics(m_font);
    setImplicitSize(std::ceil(laidOut(m_text, metrics).width), std::ceil(metrics.height()));
    setBaselineOffset(std::round(metrics.ascent()));
    update();
}

void NeonText::paintContent(QPainter& painter) const {
    painter.setFont(m_font);
    for (const Piece& piece : laidOut(m_text, QFontMetricsF(m_font)).pieces) {
        painter.drawText(QPointF(piece.x, baselineOffset()), piece.text);
    }
}

} // namespace quorvin
