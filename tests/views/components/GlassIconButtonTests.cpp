#include "theme/HexColor.h"
#include "views/support/ViewTest.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

const QColor accent = hexColor(u"3b82f6");
const QColor textSecondary = hexColor(u"b4b4b4");

class GlassIconButton : public ViewTest {
protected:
    void showButton() {
        show(u"Item { width: 100; height: 80; property int calls;"
             "GlassIconButton { objectName: 'button'; x: 30; y: 20; systemName: 'paperclip';"
             "text: 'Attach'; onClicked: ++calls } }"_s);
    }
    int calls() { return root()->property("calls").toInt(); }
    QQuickItem* button() { return item(u"button"_s); }
    QQuickItem* glass() { return item(u"glass"_s); }

    QColor symbolColor() { return item(u"symbol"_s)->property("color").value<QColor>(); }
    QColor fill() { return glass()->property("color").value<QColor>(); }
    QColor border() { return borderColor(glass()); }
    /// Of the glass against the button.
    double offset() { return glass()->mapToItem(button(), QPointF(16, 14)).y() - 14; }
    bool isPressed() { return button()->property("isPressed").toBool(); }
    void pressSettled() {
        // Held there, as no click lasts long enough to come to rest.
        button()->setProperty("isPressed", true);
        advance(1s);
    }
};

} // namespace

TEST_F(GlassIconButton, HoldsASymbolOf14InARoundedFrameOf32By28) {
    showButton();
    EXPECT_EQ(button()->size(), QSizeF(32, 28));
    EXPECT_EQ(glass()->size(), QSizeF(32, 28));
    EXPECT_EQ(glass()->property("radius").toDouble(), 7);
    EXPECT_EQ(item(u"symbol"_s)->property("size").toDouble(), 14);
    EXPECT_EQ(item(u"symbol"_s)->property("name").toString(), u"paperclip"_s);
    EXPECT_EQ(glass()->property("border").value<QObject*>()->property("width").toDouble(), 1);
}

TEST_F(GlassIconButton, Resting) {
    showButton();
    expectColor(symbolColor(), textSecondary);
    expectColor(fill(), withAlpha(Qt::white, 0.06));
    expectColor(border(), withAlpha(Qt::white, 0.1));
    EXPECT_EQ(glass()->scale(), 1);
    EXPECT_EQ(offset(), 0);
}

TEST_F(GlassIconButton, Hovered) {
    showButton();
    hover(u"button"_s);
    EXPECT_TRUE(button()->property("isHovered").toBool());
    advance(1s);
    expectColor(symbolColor(), accent);
    expectColor(fill(), withAlpha(accent, 0.15));
    expectColor(border(), withAlpha(accent, 0.5));
    EXPECT_NEAR(glass()->scale(), 1.08, 1e-6);
    EXPECT_NEAR(offset(), -1, 1e-6);
    leave();
    EXPECT_FALSE(button()->property("isHovered").toBool());
    advance(1s);
    expectColor(fill(), withAlpha(Qt::white, 0.06));
    EXPECT_NEAR(glass()->scale(), 1, 1e-6);
}

TEST_F(GlassIconButton, Pressed) {
    showButton();
    for (const bool hovered : {false, true}) {
        SCOPED_TRACE(hovered);
        if (hovered) {
            hover(u"button"_s);
        }
        pressSettled();
        expectColor(symbolColor(), accent);
        expectColor(fill(), withAlpha(accent, 0.15));
        expectColor(border(), withAlpha(accent, 0.5));
        EXPECT_NEAR(glass()->scale(), 0.88, 1e-6);
        EXPECT_NEAR(offset(), -1, 1e-6);
    }
}

TEST_F(GlassIconButton, EntersOnASpringThatSwingsPastItsAim) {
    showButton();
    hover(u"button"_s);
    advance(48ms);
    EXPECT_GT(glass()->scale(), 1.01);
    EXPECT_LT(glass()->scale(), 1.07);
    double highest = 0;
    for (int frame = 0; frame < 30; ++frame) {
        advance(16ms);
        highest = std::max(highest, glass()->scale());
    }
    EXPECT_NEAR(highest, 1 + 0.08 * 1.046, 0.0005) << "exp(-pi 0.7 / sqrt(1 - 0.49)) too far";
}

TEST_F(GlassIconButton, AClickActsAtOnceAndSpringsBackAfterATenthOfASecond) {
    showButton();
    click(u"button"_s);
    EXPECT_EQ(calls(), 1) << "before any time has passed";
    EXPECT_TRUE(isPressed());
    advance(90ms);
    EXPECT_TRUE(isPressed());
    EXPECT_LT(glass()->scale(), 0.95);
    advance(20ms);
    EXPECT_FALSE(isPressed());
    leave();
    advance(1s);
    EXPECT_NEAR(glass()->scale(), 1, 1e-6);
}

TEST_F(GlassIconButton, ASecondClickWithinATenthOfASecondActsAgainAndRestartsThePress) {
    showButton();
    click(u"button"_s);
    advance(60ms);
    click(u"button"_s);
    EXPECT_EQ(calls(), 2);
    EXPECT_TRUE(isPressed());
    advance(60ms);
    EXPECT_TRUE(isPressed()) << "the first click's release is off";
    advance(60ms);
    EXPECT_FALSE(isPressed());
}

TEST_F(GlassIconButton, IsReachedByTabAndShowsIt) {
    showButton();
    const QImage before = grab();
    key(Qt::Key_Tab);
    EXPECT_TRUE(button()->hasActiveFocus());
    // Above the glass, where the ring runs.
    EXPECT_EQ(color({46, 18}), accent);
    EXPECT_NE(before.pixelColor(46, 18), accent);
    key(Qt::Key_Space);
    EXPECT_EQ(calls(), 1);
}

TEST_F(GlassIconButton, AClickLeavesTheFocusWhereItIs) {
    showButton();
    click(u"button"_s);
    EXPECT_FALSE(button()->hasActiveFocus());
}

TEST_F(GlassIconButton, HasANameForThoseWhoCantSeeIt) {
    showButton();
    QAccessibleInterface* const interface = accessible(button());
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->text(QAccessible::Name), u"Attach"_s);
    EXPECT_EQ(interface->role(), QAccessible::Button);
}

TEST_F(GlassIconButton, FollowsTheTheme) {
    showButton();
    theme.setTheme(u"forest"_s);
    advance(500ms);
    expectColor(symbolColor(), hexColor(u"80c880"));
    hover(u"button"_s);
    advance(1s);
    expectColor(symbolColor(), hexColor(u"30d870"));
}
