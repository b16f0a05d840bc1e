#include "SettingsViewTest.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class BuildingBlocks : public SettingsViewTest {
protected:
    void showOnCard(const QString& qml) {
        show(u"Rectangle { width: 500; height: 200; color: '#161620'; property int count;"
             "property bool on; "_s +
             qml + u" }"_s);
    }
};

} // namespace

TEST_F(BuildingBlocks, TheToggleIsACapsuleWithAThumb) {
    showOnCard(u"QvnToggle { objectName: 'toggle'; x: 20; y: 20; isOn: parent.on;"
               "onColor: '#22c55e'; onFlipped: on => parent.on = on }"_s);
    EXPECT_EQ(frameOf(u"toggle"_s), QRectF(20, 20, 42, 24));
    EXPECT_EQ(frameOf(u"track"_s), QRectF(20, 20, 42, 24));
    EXPECT_EQ(item(u"track"_s)->property("radius").toDouble(), 12);
    EXPECT_EQ(item(u"thumb"_s)->size(), QSizeF(19, 19));
    EXPECT_EQ(colorOf(u"thumb"_s), QColor(Qt::white));
    EXPECT_EQ(item(u"thumb"_s)->x(), 2.5);
    EXPECT_NE(colorOf(u"track"_s), QColor(u"#22c55e"_s));
    click(u"toggle"_s);
    EXPECT_TRUE(root()->property("on").toBool());
    advance(200ms);
    EXPECT_EQ(item(u"thumb"_s)->x(), 42 - 19 - 2.5);
    EXPECT_EQ(colorOf(u"track"_s), QColor(u"#22c55e"_s));
    click(u"toggle"_s);
    EXPECT_FALSE(root()->property("on").toBool());
}

TEST_F(BuildingBlocks, ADisabledToggleStaysAsItIs) {
    showOnCard(u"SettingToggleRow { label: 'One'; description: 'Two'; value: parent.on;"
               "disabled: true; onFlipped: on => parent.on = on }"_s);
    click(u"toggle"_s);
    EXPECT_FALSE(root()->property("on").toBool());
    EXPECT_LT(item(u"toggle"_s)->opacity(), 1);
}

TEST_F(BuildingBlocks, TheButtonHasItsThreeColors) {
    showOnCard(
        u"Row { SettingsButton { objectName: 'plain'; text: 'A'; onClicked: ++root.count }"
        "SettingsButton { objectName: 'accent'; text: 'B'; accent: true }"
        "SettingsButton { objectName: 'destructive'; text: 'C'; destructive: true } }"_s.replace(
            u"root.count"_s, u"parent.parent.count"_s));
    const auto ground = [this](const QString& name) {
        QColor color =
            itemIn(item(name), u"settingsButtonGround"_s)->property("color").value<QColor>();
        color.setAlpha(255);
        return color;
    };
    EXPECT_EQ(ground(u"plain"_s), QColor(Qt::white));
    EXPECT_EQ(ground(u"accent"_s), QColor(u"#6366f1"_s));
    EXPECT_EQ(ground(u"destructive"_s), QColor(u"#ef4444"_s));
    click(u"plain"_s);
    press(item(u"plain"_s), Qt::Key_Return);
    press(item(u"plain"_s), Qt::Key_Space);
    pressByAssistant(item(u"plain"_s));
    EXPECT_EQ(root()->property("count").toInt(), 4);
    EXPECT_TRUE(itemIn(item(u"plain"_s), u"focusRing"_s)->isVisible());
}

TEST_F(BuildingBlocks, ALongTextWrapsBesideItsControl) {
    const QString words = u"words that go on "_s;
    showOnCard(
        u"SettingRow { objectName: 'row'; label: '%1'; description: '%1';"
        "SettingsButton { objectName: 'button'; text: 'Press' } }"_s.arg(words.repeated(12)));
    EXPECT_GT(frameOf(u"row"_s).height(), 80);
    EXPECT_LE(frameOf(u"rowLabel"_s).right(), frameOf(u"button"_s).left() - 12);
    EXPECT_GE(frameOf(u"rowDescription"_s).top(), frameOf(u"rowLabel"_s).bottom());
    EXPECT_EQ(frameOf(u"button"_s).right(), 500 - 16);
}

TEST_F(BuildingBlocks, TheKeysOfAShortcutStandInAPill) {
    showOnCard(u"ShortcutRow { objectName: 'row'; label: 'Cancel'; keys: 'Esc'; divided: true }"_s);
    EXPECT_EQ(textOf(u"rowLabel"_s), u"Cancel"_s);
    EXPECT_EQ(textOf(u"shortcutKeys"_s), u"Esc"_s);
    EXPECT_EQ(frameOf(u"keysPill"_s).right(), 500 - 16);
    EXPECT_TRUE(frameOf(u"keysPill"_s).contains(frameOf(u"shortcutKeys"_s)));
    EXPECT_TRUE(item(u"rowDivider"_s)->isVisible());
}

TEST_F(BuildingBlocks, TheSliderLetsAssistantsSetItsValue) {
    show(u"SettingSlider { property real setting: 2; from: 0; to: 5; stepSize: 0.5; value: setting;"
         "valueText: ''; valueWidth: 20; label: 'Gate'; onChosen: value => setting = value }"_s);
    QAccessibleInterface* const slider = accessible(item(u"slider"_s));
    EXPECT_EQ(slider->role(), QAccessible::Slider);
    EXPECT_EQ(slider->text(QAccessible::Name), u"Gate"_s);
    slider->valueInterface()->setCurrentValue(3.3);
    EXPECT_EQ(root()->property("setting").toDouble(), 3.5);
}
