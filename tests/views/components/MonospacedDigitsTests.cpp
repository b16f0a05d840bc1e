#include "theme/GeistFont.h"
#include "theme/MonospacedDigits.h"

#include <QGuiApplication>
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
        return m_line.horizontalAdvance();
    }
    /// Where the caret stands before the character.
    double place(const QString& text, int position) {
        lay(text);
        return m_line.cursorToX(position);
    }

    QTextLayout m_layout;
    QTextLine m_line;
};

constexpr double tolerance = 1.0 / 32; // positions are kept in 64ths of a pixel

} // namespace

TEST_P(MonospacedDigits, AllNumbersOfALengthAreEquallyWide) {
    lay(u"111"_s, false);
    const double narrow = m_line.horizontalAdvance();
    lay(u"000"_s, false);
    ASSERT_LT(narrow + 1, m_line.horizontalAdvance()) << "else there is nothing to show";
    EXPECT_NEAR(width(u"111"_s), width(u"000"_s), tolerance);
    EXPECT_NEAR(width(u"11:11"_s), width(u"08:49"_s), tolerance);
    EXPECT_NEAR(width(u"1"_s), width(u"4"_s), tolerance);
}

TEST_P(MonospacedDigits, NothingMovesWhileTheNumberCounts) {
    const double minutes = place(u"08:49"_s, 3);
    EXPECT_NEAR(place(u"11:11"_s, 3), minutes, tolerance);
    EXPECT_NEAR(place(u"17:71"_s, 3), minutes, tolerance);
}

TEST_P(MonospacedDigits, OtherTextStaysAsItIs) {
    lay(u"READY"_s, false);
    const double plain = m_line.horizontalAdvance();
    EXPECT_EQ(width(u"READY"_s), plain);
    EXPECT_TRUE(monospacedDigits(u"READY ٣"_s, GeistFont::font(11)).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Weights, MonospacedDigits,
                         ::testing::Values(QFont::Normal, QFont::Medium, QFont::Bold),
                         [](const auto& weight) { return std::to_string(weight.param); });
