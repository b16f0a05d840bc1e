#include "views/support/ViewTest.h"

using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double tolerance = 1.0 / 16; // positions are kept in 64ths of a pixel

class DigitText : public ViewTest {
protected:
    double widthOf(const QString& text) {
        root()->setProperty("text", text);
        return root()->implicitWidth();
    }
};

} // namespace

TEST_F(DigitText, IsAsWideForOnesAsForNoughts) {
    show(u"DigitText { font: Typeface.font(11, Font.Medium) }"_s);
    EXPECT_NEAR(widthOf(u"111"_s), widthOf(u"000"_s), tolerance);
    EXPECT_NEAR(widthOf(u"17:11"_s), widthOf(u"08:49"_s), tolerance);
    EXPECT_NEAR(widthOf(u"111"_s), widthOf(u"444"_s), tolerance);
    EXPECT_LT(widthOf(u"11"_s), widthOf(u"111"_s));
    show(u"Text { font: Typeface.font(11, Font.Medium) }"_s);
    EXPECT_LT(widthOf(u"111"_s) + 2, widthOf(u"000"_s)) << "else the typeface needs no help";
}

TEST_F(DigitText, StaysEvenInAnotherFontAndSize) {
    show(u"DigitText { text: '111' }"_s);
    const double before = root()->implicitWidth();
    root()->setProperty("font", QFont(u"Inter"_s, 30, QFont::Bold));
    EXPECT_GT(root()->implicitWidth(), before);
    EXPECT_NEAR(widthOf(u"111"_s), widthOf(u"444"_s), tolerance);
    root()->setProperty("font", QFont(u"Inter"_s, 9, QFont::Bold));
    EXPECT_NEAR(widthOf(u"111"_s), widthOf(u"444"_s), tolerance);
    EXPECT_NEAR(widthOf(u"111"_s), widthOf(u"000"_s), tolerance);
}

TEST_F(DigitText, PaintsEachDigitInItsPlace) {
    show(u"DigitText { width: 80; font: Typeface.font(20) }"_s);
    const auto inkFrom = [this](const QString& text) {
        root()->setProperty("text", text);
        const QImage image = grab();
        int column = 60;
        const auto isInked = [&](int x) {
            for (int y = 0; y < image.height(); ++y) {
                if (qGray(image.pixel(x, y)) < 128) {
                    return true;
                }
            }
            return false;
        };
        while (column > 0 && !isInked(column)) {
            --column;
        }
        return column;
    };
    window().setColor(Qt::white);
    root()->setProperty("color", QColor(Qt::black));
    EXPECT_EQ(inkFrom(u"118"_s), inkFrom(u"008"_s)) << "where the last digit ends";
}

TEST_F(DigitText, LeavesThePointerToWhatIsBelow) {
    show(u"MouseArea { width: 80; height: 30; property int taps; onClicked: ++taps;"
         "DigitText { text: '12'; font: Typeface.font(20) } }"_s);
    clickAt({5, 10});
    EXPECT_EQ(root()->property("taps").toInt(), 1);
}

TEST_F(DigitText, EditorsKeepTheirDigitsEvenWhileTyping) {
    show(u"TextEdit { id: edit; focus: true; width: 300; height: 40; font: Typeface.font(13);"
         "MonospacedDigits { document: edit.textDocument; font: edit.font } }"_s);
    type(u"111"_s);
    EXPECT_EQ(root()->property("text").toString(), u"111"_s);
    const double ones = root()->implicitWidth();
    root()->setProperty("text", u"000"_s);
    EXPECT_NEAR(root()->implicitWidth(), ones, tolerance);
}
