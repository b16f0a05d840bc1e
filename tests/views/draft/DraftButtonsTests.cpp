#include "DraftViewTest.h"
#include "theme/HexColor.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

const QColor accent = hexColor(u"3b82f6");

class DraftToggleButton : public DraftViewTest {
protected:
    void showButton(bool expanded) {
        show(u"Item { width: 200; height: 80; property int calls;"
             "DraftToggleButton { objectName: 'button'; x: 30; y: 20; expanded: %1;"
             "onClicked: ++calls } }"_s.arg(expanded ? u"true"_s : u"false"_s));
    }
    int calls() { return root()->property("calls").toInt(); }
    double magnification() { return propertyOf(u"toggleGround"_s, "magnification").toDouble(); }
};

class DraftActionButton : public DraftViewTest {
protected:
    void showButton() {
        show(u"Item { width: 200; height: 80; property int calls;"
             "DraftActionButton { objectName: 'button'; x: 30; y: 20; label: 'Attach';"
             "icon.name: 'paperclip'; color: '#3b82f6'; onClicked: ++calls } }"_s);
    }
    int calls() { return root()->property("calls").toInt(); }
    QColor border() {
        return propertyOf(u"actionGround"_s, "border")
            .value<QObject*>()
            ->property("color")
            .value<QColor>();
    }
};

} // namespace

TEST_F(DraftToggleButton, SaysWhatAClickDoes) {
    showButton(false);
    EXPECT_EQ(textOf(u"toggleLabel"_s), u"Show Draft"_s);
    EXPECT_EQ(propertyOf(u"toggleSymbol"_s, "name"), u"chevron.down"_s);
    showButton(true);
    EXPECT_EQ(textOf(u"toggleLabel"_s), u"Hide Draft"_s);
    EXPECT_EQ(propertyOf(u"toggleSymbol"_s, "name"), u"chevron.up"_s);
    EXPECT_EQ(accessible(item(u"button"_s))->text(QAccessible::Name), u"Hide Draft"_s);
}

TEST_F(DraftToggleButton, HasItsMeasures) {
    showButton(true);
    EXPECT_EQ(propertyOf(u"toggleGround"_s, "radius"), 8);
    EXPECT_EQ(propertyOf(u"toggleSymbol"_s, "size"), 10);
    EXPECT_EQ(propertyOf(u"toggleLabel"_s, "font").value<QFont>().pixelSize(), 12);
    const QRectF button = frameOf(item(u"button"_s));
    const QRectF symbol = frameOf(item(u"toggleSymbol"_s));
    const QRectF label = frameOf(item(u"toggleLabel"_s));
    EXPECT_EQ(symbol.left() - button.left(), 14);
    EXPECT_EQ(label.left() - symbol.right(), 5);
    EXPECT_EQ(button.right() - label.right(), 14);
    EXPECT_EQ(button.height() - std::max(label.height(), symbol.height()), 2 * 7);
}

TEST_F(DraftToggleButton, LightsUpAndGrowsOnASpringUnderThePointer) {
    showButton(true);
    expectColor(propertyOf(u"toggleGround"_s, "color").value<QColor>(), hexColor(u"2a2a2a"));
    const QColor resting = propertyOf(u"toggleGround"_s, "fill").value<QColor>();
    EXPECT_EQ(magnification(), 1);
    hover(u"button"_s);
    double highest = 1;
    for (int frame = 0; frame < 60; ++frame) {
        advance(16ms);
        highest = std::max(highest, magnification());
    }
    EXPECT_NEAR(highest, 1 + 0.03 * 1.046, 0.0003) << "exp(-pi 0.7 / sqrt(1 - 0.49)) too far";
    EXPECT_NEAR(magnification(), 1.03, 1e-6);
    EXPECT_NEAR(item(u"toggleContent"_s)->scale(), 1.03, 1e-6);
    const QColor border = hexColor(u"2a2a2a");
    const auto mixed = [&](float from, float to) { return from + (to - from) * 0.3F; };
    expectColor(propertyOf(u"toggleGround"_s, "color").value<QColor>(),
                QColor::fromRgbF(mixed(border.redF(), accent.redF()),
                                 mixed(border.greenF(), accent.greenF()),
                                 mixed(border.blueF(), accent.blueF())));
    EXPECT_GT(propertyOf(u"toggleGround"_s, "fill").value<QColor>().lightness(),
              resting.lightness());
    leave();
    advance(1s);
    EXPECT_NEAR(magnification(), 1, 1e-6);
}

TEST_F(DraftToggleButton, StaysWholeWhenItHasGrown) {
    showButton(true);
    hover(u"button"_s);
    advance(1s);
    // Between the line on the left and the symbol there is nothing but the ground.
    const QImage image = grab();
    const QRectF button = frameOf(item(u"button"_s));
    const QColor fill = propertyOf(u"toggleGround"_s, "fill").value<QColor>();
    for (int y = qRound(button.top()) + 2; y < qRound(button.bottom()) - 2; ++y) {
        for (int x = qRound(button.left()) + 4; x < qRound(button.left()) + 10; ++x) {
            SCOPED_TRACE(::testing::Message() << x << ", " << y);
            expectColor(image.pixelColor(x, y), fill);
        }
    }
}

TEST_F(DraftToggleButton, IsPressedByPointerAndKeys) {
    showButton(true);
    click(u"button"_s);
    EXPECT_EQ(calls(), 1);
    EXPECT_FALSE(propertyOf(u"focusRing"_s, "visible").toBool());
    key(Qt::Key_Tab);
    EXPECT_TRUE(propertyOf(u"focusRing"_s, "visible").toBool());
    key(Qt::Key_Space);
    EXPECT_EQ(calls(), 2);
    key(Qt::Key_Return);
    EXPECT_EQ(calls(), 3);
    pressByAssistant(item(u"button"_s));
    EXPECT_EQ(calls(), 4);
}

TEST_F(DraftActionButton, HasItsMeasures) {
    showButton();
    EXPECT_EQ(propertyOf(u"actionGround"_s, "radius"), 6);
    EXPECT_EQ(propertyOf(u"actionSymbol"_s, "name"), u"paperclip"_s);
    EXPECT_EQ(propertyOf(u"actionSymbol"_s, "size"), 10);
    EXPECT_EQ(textOf(u"actionLabel"_s), u"Attach"_s);
    EXPECT_EQ(propertyOf(u"actionLabel"_s, "font").value<QFont>().pixelSize(), 11);
    const QRectF button = frameOf(item(u"button"_s));
    const QRectF symbol = frameOf(item(u"actionSymbol"_s));
    const QRectF label = frameOf(item(u"actionLabel"_s));
    EXPECT_EQ(symbol.left() - button.left(), 9);
    EXPECT_EQ(label.left() - symbol.right(), 4);
    EXPECT_EQ(button.right() - label.right(), 9);
    EXPECT_EQ(button.height() - std::max(label.height(), symbol.height()), 2 * 5);
}

TEST_F(DraftActionButton, NeedsNoSymbol) {
    show(u"Item { width: 200; height: 80; DraftActionButton { objectName: 'button'; label: 'Go';"
         "color: 'red' } }"_s);
    EXPECT_EQ(frameOf(item(u"actionLabel"_s)).left() - frameOf(item(u"button"_s)).left(), 9);
}

TEST_F(DraftActionButton, TurnsItsGroundUnderThePointer) {
    showButton();
    expectColor(colorOf(u"actionLabel"_s), accent);
    expectColor(colorOf(u"actionSymbol"_s), accent);
    expectColor(colorOf(u"actionGround"_s), withAlpha(accent, 0.14));
    expectColor(border(), withAlpha(accent, 0.25));
    hover(u"button"_s);
    advance(75ms);
    EXPECT_NEAR(colorOf(u"actionGround"_s).alphaF(), 0.52, 0.1) << "half way";
    advance(90ms);
    expectColor(colorOf(u"actionLabel"_s), Qt::white);
    expectColor(colorOf(u"actionSymbol"_s), Qt::white);
    expectColor(colorOf(u"actionGround"_s), withAlpha(accent, 0.9));
    expectColor(border(), withAlpha(accent, 0.25));
    leave();
    advance(160ms);
    expectColor(colorOf(u"actionGround"_s), withAlpha(accent, 0.14));
}

TEST_F(DraftActionButton, IsPressedByPointerAndKeys) {
    showButton();
    click(u"button"_s);
    EXPECT_EQ(calls(), 1);
    EXPECT_FALSE(item(u"button"_s)->hasActiveFocus());
    key(Qt::Key_Tab);
    EXPECT_TRUE(propertyOf(u"focusRing"_s, "visible").toBool());
    key(Qt::Key_Space);
    key(Qt::Key_Return);
    EXPECT_EQ(calls(), 3);
    EXPECT_EQ(accessible(item(u"button"_s))->text(QAccessible::Name), u"Attach"_s);
    EXPECT_EQ(accessible(item(u"button"_s))->role(), QAccessible::Button);
}
