#include "theme/MonospacedDigits.h"

#include <QRawFont>

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

/// How much narrower than the widest each digit is, in pixels.
std::array<double, 10> narrowness(const QFont& font) {
    const QRawFont raw = QRawFont::fromFont(font);
    const auto advances = raw.advancesForGlyphIndexes(raw.glyphIndexesForString(u"0123456789"_s),
                                                      QRawFont::UseDesignMetrics);
    std::array<double, 10> result{};
    if (advances.size() != static_cast<qsizetype>(result.size())) {
        return result; // a font without digits: another one will show them
    }
    double widest = 0;
    for (const QPointF& advance : advances) {
        widest = std::max(widest, advance.x());
    }
    std::transform(advances.begin(), advances.end(), result.begin(),
                   [widest](const QPointF& advance) { return widest - advance.x(); });
    return result;
}

bool isDigit(const QString& text, qsizetype position) {
    return position < text.size() && text[position] >= u'0' && text[position] <= u'9';
}

/// What has to be added on each side of the character, which is nothing but for digits.
double margin(const QString& text, qsizetype position, const std::array<double, 10>& missing) {
    return isDigit(text, position) ? missing.at(text[position].unicode() - u'0') / 2 : 0;
}

/// Whether the character can be shaped apart from its neighbours. A letter or a mark can't.
bool standsAlone(const QString& text, qsizetype position) {
    const QChar character = text[position];
    return isDigit(text, position) || character.isPunct() || character.isSymbol() ||
           character.isSpace();
}

} // namespace

QList<QTextLayout::FormatRange> monospacedDigits(const QString& text, const QFont& font) {
    const auto missing = narrowness(font);
    QList<QTextLayout::FormatRange> ranges;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!standsAlone(text, i)) {
            continue;
        }
        // Space can only be put after a character.
        double space = margin(text, i, missing) + margin(text, i + 1, missing);
        if (i > 0 && !standsAlone(text, i - 1)) {
            space += margin(text, i, missing);
        }
        // A digit has a range also without space: kerning would bring it nearer to the next one.
        if (space > 0 || isDigit(text, i)) {
            QTextCharFormat format;
            format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
            format.setFontLetterSpacing(space);
            ranges.append({static_cast<int>(i), 1, format});
        }
    }
    return ranges;
}

double monospacedIndent(const QString& text, const QFont& font) {
    return margin(text, 0, narrowness(font));
}

} // namespace quorvin
