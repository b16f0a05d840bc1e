#include "HeaderViewTest.h"
#include "theme/HexColor.h"
#include "views/components/DampedSpring.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

struct ChipLook {
    QString name;
    QString text;
    QString symbol;
    QColor start;
    QColor end;
    QColor tint;
    QColor glow;
};

const ChipLook claude{u"Claude"_s,         u"Claude"_s,         u"sparkles"_s,
                      hexColor(u"b794ff"), hexColor(u"7c3aed"), hexColor(u"8b5cf6"),
                      hexColor(u"a78bfa")};
const ChipLook openCode{
    u"OpenCode"_s,       u"OpenCode"_s,       u"chevron.left.forwardslash.chevron.right"_s,
    hexColor(u"5eead4"), hexColor(u"059669"), hexColor(u"10b981"),
    hexColor(u"34d399")};
const QColor textMuted = hexColor(u"666666"); // of the theme razer

class SendChip : public HeaderViewTest {
protected:
    void showChip(const ChipLook& look = claude, bool disabled = false) {
        show(u"Rectangle { width: 240; height: 120; color: 'black'; property int calls;"
             "SendChip { objectName: 'chip'; x: 50; y: 40; target: SendChip.Target.%1;"
             "disabled: %2; onClicked: ++parent.calls } }"_s.arg(look.name)
                 .arg(disabled ? u"true"_s : u"false"_s));
    }
    [[nodiscard]] int calls() { return root()->property("calls").toInt(); }
    [[nodiscard]] double scale() { return item(u"capsule"_s)->scale(); }
    [[nodiscard]] double pressAmount() { return propertyOf(u"chip"_s, "pressAmount").toDouble(); }
    [[nodiscard]] bool isPressed() { return propertyOf(u"chip"_s, "isPressed").toBool(); }
    void holdPressed() {
        // Held there, as no click lasts long enough to come to rest.
        item(u"chip"_s)->setProperty("isPressed", true);
        advance(1s);
    }

    void expectGradient(const QString& name, const ChipLook& look) {
        expectColor(colorOf(name), look.start);
        expectColor(colorOf(name, "endColor"), look.end);
    }
    void expectRestingLookAlone() {
        EXPECT_EQ(item(u"restingLook"_s)->opacity(), 1);
        EXPECT_FALSE(item(u"litLook"_s)->isVisible());
        EXPECT_NEAR(scale(), 1, 1e-6);
    }
    void expectLitLookAlone(const ChipLook& look, double scaledBy) {
        EXPECT_EQ(item(u"litLook"_s)->opacity(), 1);
        EXPECT_FALSE(item(u"restingLook"_s)->isVisible());
        expectGradient(u"litFill"_s, look);
        EXPECT_EQ(propertyOf(u"litFill"_s, "lineWidth").toDouble(), 0);
        expectColor(colorOf(u"litFill"_s, "shadowColor"), withAlpha(look.glow, 0.65));
        EXPECT_EQ(propertyOf(u"litFill"_s, "shadowRadius").toDouble(), 14);
        EXPECT_EQ(propertyOf(u"litFill"_s, "shadowOffset").toDouble(), 3);
        EXPECT_DOUBLE_EQ(propertyOf(u"litBorder"_s, "lineWidth").toDouble(), 1.2);
        expectColor(colorOf(u"litBorder"_s), withAlpha(Qt::white, 0.55));
        EXPECT_EQ(item(u"litBorder"_s)->opacity(), 1);
        for (QQuickItem* part : item(u"litLabel"_s)->childItems()) {
            EXPECT_EQ(part->property("color").value<QColor>(), QColor(Qt::white));
        }
        EXPECT_NEAR(scale(), scaledBy, 1e-6);
    }
};

} // namespace

TEST_F(SendChip, IsACapsuleAroundASymbolAndAName) {
    for (const ChipLook& look : {claude, openCode}) {
        showChip(look);
        EXPECT_EQ(textOf(u"chip"_s), look.text);
        const auto parts = item(u"litLabel"_s)->childItems();
        ASSERT_EQ(parts.size(), 2);
        EXPECT_EQ(parts[0]->property("name").toString(), look.symbol);
        EXPECT_EQ(parts[0]->property("size").toDouble(), 12);
        EXPECT_EQ(parts[1]->property("text").toString(), look.text);
        const QFont font = parts[1]->property("font").value<QFont>();
        EXPECT_EQ(font.pixelSize(), 13);
        EXPECT_EQ(font.weight(), QFont::Bold);
        EXPECT_EQ(parts[1]->x(), parts[0]->width() + 7);
        const QRectF chip = frameOf(u"chip"_s);
        const QRectF label = frameOf(u"restingLabel"_s);
        EXPECT_EQ(label.topLeft(), chip.topLeft() + QPointF(16, 8));
        EXPECT_EQ(label.bottom(), chip.bottom() - 8);
        EXPECT_NEAR(label.right(), chip.right() - 16, 1);
        EXPECT_EQ(frameOf(u"restingFill"_s), chip);
    }
}

TEST_F(SendChip, Disabled) {
    for (const ChipLook& look : {claude, openCode}) {
        showChip(look, true);
        expectRestingLookAlone();
        expectColor(colorOf(u"restingFill"_s), withAlpha(Qt::white, 0.04));
        EXPECT_EQ(propertyOf(u"restingFill"_s, "shadowRadius").toDouble(), 0);
        expectColor(colorOf(u"restingLabel"_s), textMuted);
        expectColor(colorOf(u"restingLabel"_s, "endColor"), textMuted);
        expectGradient(u"restingBorder"_s, look);
        EXPECT_DOUBLE_EQ(item(u"restingBorder"_s)->opacity(), 0.2);
    }
}

TEST_F(SendChip, Resting) {
    for (const ChipLook& look : {claude, openCode}) {
        showChip(look);
        expectRestingLookAlone();
        expectColor(colorOf(u"restingFill"_s), withAlpha(look.tint, 0.16));
        expectColor(colorOf(u"restingFill"_s, "shadowColor"), withAlpha(look.glow, 0.3));
        EXPECT_EQ(propertyOf(u"restingFill"_s, "shadowRadius").toDouble(), 7);
        EXPECT_EQ(propertyOf(u"restingFill"_s, "shadowOffset").toDouble(), 2);
        expectGradient(u"restingLabel"_s, look);
        expectGradient(u"restingBorder"_s, look);
        EXPECT_DOUBLE_EQ(propertyOf(u"restingBorder"_s, "lineWidth").toDouble(), 1.2);
        EXPECT_DOUBLE_EQ(item(u"restingBorder"_s)->opacity(), 0.7);
    }
}

TEST_F(SendChip, Hovered) {
    for (const ChipLook& look : {claude, openCode}) {
        showChip(look);
        hover(u"chip"_s);
        advance(1s);
        expectLitLookAlone(look, 1.04);
        leave();
        advance(1s);
        expectRestingLookAlone();
    }
}

TEST_F(SendChip, Pressed) {
    for (const ChipLook& look : {claude, openCode}) {
        for (const bool isHovered : {false, true}) {
            showChip(look);
            if (isHovered) {
                hover(u"chip"_s);
            }
            holdPressed();
            expectLitLookAlone(look, 0.93);
        }
    }
}

TEST_F(SendChip, ShowsItsColours) {
    showChip();
    const QRectF chip = frameOf(u"chip"_s);
    // In the padding, where only the fill is.
    const QPoint left = (chip.topLeft() + QPointF(9, chip.height() / 2)).toPoint();
    const QPoint right = (chip.topRight() + QPointF(-9, chip.height() / 2)).toPoint();
    const QPoint below = (chip.bottomLeft() + QPointF(chip.width() / 2, 4)).toPoint();
    const QColor resting = color(left);
    EXPECT_NEAR(resting.red(), 0.16 * claude.tint.red(), 2);
    EXPECT_NEAR(resting.blue(), 0.16 * claude.tint.blue(), 2);
    EXPECT_EQ(color(right), resting);
    const int restingGlow = color(below).blue();
    EXPECT_GT(restingGlow, 10);
    hover(u"chip"_s);
    advance(1s);
    const QColor litLeft = color(left);
    const QColor litRight = color(right);
    EXPECT_NEAR(litLeft.red(), claude.start.red(), 20);
    EXPECT_NEAR(litLeft.green(), claude.start.green(), 25);
    EXPECT_NEAR(litRight.red(), claude.end.red(), 20);
    EXPECT_NEAR(litRight.green(), claude.end.green(), 25);
    EXPECT_GT(color(below).blue(), restingGlow + 30);
}

TEST_F(SendChip, MovesOnItsSprings) {
    showChip();
    const auto amountAfter = [](DampedSpring spring, double seconds) {
        return 1 + spring.after({.offset = -1, .velocity = 0}, seconds).offset;
    };
    hover(u"chip"_s);
    advance(96ms);
    EXPECT_NEAR(propertyOf(u"chip"_s, "hoverAmount").toDouble(),
                amountAfter({.response = 0.3, .damping = 0.7}, 0.096), 0.02);
    advance(1s);
    item(u"chip"_s)->setProperty("isPressed", true);
    advance(48ms);
    EXPECT_NEAR(pressAmount(), amountAfter({.response = 0.16, .damping = 0.5}, 0.048), 0.02);
    advance(1s);
    item(u"chip"_s)->setProperty("isPressed", false);
    advance(96ms);
    EXPECT_NEAR(1 - pressAmount(), amountAfter({.response = 0.3, .damping = 0.6}, 0.096), 0.02);
}

TEST_F(SendChip, AClickActsAtOnceAndSpringsBackAfter80Milliseconds) {
    showChip();
    click(u"chip"_s);
    EXPECT_EQ(calls(), 1) << "before any time has passed";
    EXPECT_TRUE(isPressed());
    advance(70ms);
    EXPECT_TRUE(isPressed());
    EXPECT_LT(scale(), 0.97);
    advance(20ms);
    EXPECT_FALSE(isPressed());
    leave();
    advance(1s);
    expectRestingLookAlone();
}

TEST_F(SendChip, TakesNoClicksWhileDisabled) {
    showChip(claude, true);
    click(u"chip"_s);
    hover(u"chip"_s);
    advance(1s);
    EXPECT_EQ(calls(), 0);
    expectRestingLookAlone();
    key(Qt::Key_Tab);
    EXPECT_FALSE(item(u"chip"_s)->hasActiveFocus());
    pressByAssistant(item(u"chip"_s));
    EXPECT_EQ(calls(), 0);
}

TEST_F(SendChip, ComesToRestWhenItsClickDisablesIt) {
    showChip();
    click(u"chip"_s);
    item(u"chip"_s)->setProperty("disabled", true);
    EXPECT_LE(scale(), 1.04);
    advance(1s);
    expectRestingLookAlone();
    EXPECT_FALSE(isPressed());
}

TEST_F(SendChip, IsOperatedByKeyboardAndAssistant) {
    showChip(openCode);
    EXPECT_EQ(accessible(item(u"chip"_s))->text(QAccessible::Name), u"OpenCode"_s);
    EXPECT_EQ(accessible(item(u"chip"_s))->role(), QAccessible::Button);
    const QPoint aboveTheChip(90, 38);
    const QColor before = color(aboveTheChip);
    key(Qt::Key_Tab);
    EXPECT_TRUE(item(u"chip"_s)->hasActiveFocus());
    EXPECT_EQ(color(aboveTheChip), hexColor(u"3b82f6")) << "the ring, in the accent colour";
    EXPECT_NE(color(aboveTheChip), before);
    key(Qt::Key_Space);
    EXPECT_EQ(calls(), 1);
    key(Qt::Key_Return);
    EXPECT_EQ(calls(), 2);
    pressByAssistant(item(u"chip"_s));
    EXPECT_EQ(calls(), 3);
}
