#include "theme/GeistFont.h"
#include "theme/MonospacedDigits.h"

#include <QGlyphRun>
#include <QGuiApplication>
#include <QRawFont>
#include <QTextLine>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

class MonospacedDigits : public ::testing::TestWithParam<QFont::Weight> {
protected:
    void lay(const QString& text, bool monospaced = true) {
        const QFont font = GeistFont::font(11, GetParam());
        QTextOption option;
        option.setUseDesignMetrics(true);
        m_layout.setText(text);
        m_layout.setFont(font);
        m_layout.setTextOption(option);
        m_layout.setFormats(monospaced ? monospacedDigits(text, font)
                                       : QList<QTextLayout::FormatRange>());
        m_layout.beginLayout();
        m_line = m_layout.createLine();
        m_layout.endLayout();
    }
    double width(const QString& text) {
        lay(text);
        return indent(text) + m_line.horizontalAdvance();
    }
    /// Where the middle of the character's glyph is.
    double middle(const QString& text, int position) {
        lay(text);
        const QRawFont font = m_line.glyphRuns(position, 1).first().rawFont();
        const auto advance = font.advancesForGlyphIndexes(
            font.glyphIndexesForString(text.mid(position, 1)), QRawFont::UseDesignMetrics);
        return indent(text) + m_line.cursorToX(position) + advance.first().x() / 2;
    }
    static double indent(const QString& text) {
        return monospacedIndent(text, GeistFont::font(11, GetParam()));
    }

    QTextLayout m_layout;
    QTextLine m_line;
};

constexpr double advanceTolerance = 1.0 / 32; // positions are kept in 64ths of a pixel

} // namespace

TEST_P(MonospacedDigits, AllNumbersOfALengthAreEquallyWide) {
    lay(u"111"_s, false);
    const double narrow = m_line.horizontalAdvance();
    lay(u"000"_s, false);
    ASSERT_LT(narrow + 1, m_line.horizontalAdvance()) << "else there is nothing to show";
    EXPECT_NEAR(width(u"111"_s), width(u"000"_s), advanceTolerance);
    EXPECT_NEAR(width(u"11:11"_s), width(u"08:49"_s), advanceTolerance);
    EXPECT_NEAR(width(u"1"_s), width(u"4"_s), advanceTolerance);
}

TEST_P(MonospacedDigits, EachDigitKeepsItsMiddleWhileTheNumberCounts) {
    for (const int position : {0, 1, 3, 4}) {
        const double place = middle(u"08:49"_s, position);
        EXPECT_NEAR(middle(u"11:11"_s, position), place, advanceTolerance) << position;
        EXPECT_NEAR(middle(u"17:71"_s, position), place, advanceTolerance) << position;
    }
}

TEST_P(MonospacedDigits, ALetterBeforeANumberIsLeftAlone) {
    EXPECT_NEAR(width(u"v1.1"_s), width(u"v4.0"_s), advanceTolerance);
    for (const QTextLayout::FormatRange& range : monospacedDigits(u"é1"_s, GeistFont::font(11))) {
        EXPECT_EQ(range.start, 1);
    }
}

TEST_P(MonospacedDigits, OtherTextStaysAsItIs) {
    lay(u"READY"_s, false);
    const double plain = m_line.horizontalAdvance();
    EXPECT_EQ(width(u"READY"_s), plain);
    EXPECT_TRUE(monospacedDigits(u"READY٣"_s, GeistFont::font(11)).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Weights, MonospacedDigits,
                         ::testing::Values(QFont::Normal, QFont::Medium, QFont::Bold),
                         [](const auto& weight) { return std::to_string(weight.param); });
