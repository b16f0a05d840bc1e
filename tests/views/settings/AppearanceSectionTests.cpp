#include "SettingsViewTest.h"
#include "theme/ThemeLibrary.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class AppearanceSection : public SettingsViewTest {
protected:
    [[nodiscard]] QStringList selected(const QString& chips) {
        QStringList names;
        for (QQuickItem* chip : items(chips)) {
            if (chip->property("isSelected").toBool()) {
                names.append(chip->property("text").toString());
            }
        }
        return names;
    }
};

} // namespace

TEST_F(AppearanceSection, HasItsCards) {
    open(Tab::appearance);
    EXPECT_EQ(cards(),
              QStringList({u"Theme: "_s, u"Animation Ring: "_s, u"Window: Window Opacity"_s}));
}

TEST_F(AppearanceSection, OffersEveryThemeInFourColumns) {
    open(Tab::appearance);
    const auto chips = items(u"themeChip"_s);
    const auto& themes = ThemeLibrary::allThemes();
    ASSERT_EQ(chips.size(), static_cast<qsizetype>(themes.size()));
    const QRectF first = frameOf(chips[0]);
    for (qsizetype i = 0; i < chips.size(); ++i) {
        const ThemeColors& colors = themes.at(static_cast<std::size_t>(i));
        EXPECT_EQ(chips[i]->property("text").toString().toLower(), colors.name);
        EXPECT_TRUE(chips[i]->property("text").toString().at(0).isUpper());
        EXPECT_EQ(itemsIn(chips[i], u"swatch"_s).size(), 3);
        const QRectF place = frameOf(chips[i]);
        EXPECT_NEAR(place.left(), first.left() + (i % 4) * (first.width() + 8), 0.01);
        EXPECT_NEAR(place.top(), first.top() + (i / 4) * (first.height() + 8), 0.01);
        EXPECT_NEAR(place.width(), first.width(), 0.01);
    }
    EXPECT_EQ(chips[0]->property("font").value<QFont>().pixelSize(), 10);
    EXPECT_EQ(chips[0]->property("leftPadding").toDouble(), 14);
    EXPECT_EQ(chips[0]->property("topPadding").toDouble(), 8);
}

TEST_F(AppearanceSection, AClickChoosesATheme) {
    open(Tab::appearance);
    EXPECT_EQ(selected(u"themeChip"_s), QStringList{u"Razer"_s});
    const auto chips = items(u"themeChip"_s);
    for (qsizetype i = 0; i < chips.size(); ++i) {
        const ThemeColors& colors = ThemeLibrary::allThemes().at(static_cast<std::size_t>(i));
        clickOn(chips[i]);
        EXPECT_EQ(app().selectedTheme(), colors.name);
        EXPECT_EQ(theme.current(), colors);
        EXPECT_EQ(defaults.string(u"selectedTheme"_s), colors.name);
        EXPECT_EQ(selected(u"themeChip"_s), QStringList{chips[i]->property("text").toString()});
        EXPECT_EQ(borderColor(itemIn(chips[i], u"themeChipGround"_s)), colors.accent);
    }
    press(chips[2], Qt::Key_Space);
    EXPECT_EQ(theme.current().name, u"latte"_s);
    pressByAssistant(chips[3]);
    EXPECT_EQ(theme.current().name, u"neon"_s);
}

TEST_F(AppearanceSection, OffersTheAnimationsInThreeColumns) {
    open(Tab::appearance);
    const auto chips = items(u"animationChip"_s);
    const QStringList names{u"Wave"_s, u"Pulse"_s, u"Comet"_s,  u"Bars"_s, u"Orbit"_s,
                            u"Nova"_s, u"Dna"_s,   u"Plasma"_s, u"Radar"_s};
    ASSERT_EQ(chips.size(), names.size());
    const QRectF first = frameOf(chips[0]);
    EXPECT_EQ(selected(u"animationChip"_s), QStringList{u"Wave"_s});
    for (qsizetype i = 0; i < chips.size(); ++i) {
        EXPECT_EQ(chips[i]->property("text"), names[i]);
        const QRectF place = frameOf(chips[i]);
        EXPECT_NEAR(place.left(), first.left() + (i % 3) * (first.width() + 8), 0.01);
        EXPECT_NEAR(place.top(), first.top() + (i / 3) * (first.height() + 8), 0.01);
    }
    for (qsizetype i = 0; i < chips.size(); ++i) {
        clickOn(chips[i]);
        EXPECT_EQ(app().animationStyle(), names[i].toLower());
        EXPECT_EQ(defaults.string(u"animationStyle"_s), names[i].toLower());
        EXPECT_EQ(selected(u"animationChip"_s), QStringList{names[i]});
    }
}

TEST_F(AppearanceSection, TheOpacityGoesFromThirtyPercentUp) {
    const auto mainWindow = windowSystem.add(u"Quorvin"_s);
    open(Tab::appearance);
    QQuickItem* const slider = control(u"Window Opacity"_s, u"slider"_s);
    QQuickItem* const value = control(u"Window Opacity"_s, u"sliderValue"_s);
    EXPECT_EQ(slider->width(), 100);
    EXPECT_EQ(value->width(), 38);
    EXPECT_LE(value->property("contentWidth").toDouble(), 38);
    for (int percent = 100; percent > 30; percent -= 5) {
        EXPECT_EQ(value->property("text"), u"%1%"_s.arg(percent));
        press(slider, Qt::Key_Left);
        EXPECT_DOUBLE_EQ(app().windowOpacity(), (percent - 5) / 100.0);
        EXPECT_EQ(mainWindow->alpha, app().windowOpacity());
    }
    press(slider, Qt::Key_Left);
    EXPECT_DOUBLE_EQ(app().windowOpacity(), 0.3);
    EXPECT_EQ(defaults.number(u"windowOpacity"_s), 0.3);
}

TEST_F(AppearanceSection, AValueOutOfRangeStaysUntilTheHandleMoves) {
    defaults.setDouble(u"windowOpacity"_s, 0.1);
    open(Tab::appearance);
    EXPECT_EQ(app().windowOpacity(), 0.1);
    EXPECT_EQ(control(u"Window Opacity"_s, u"sliderValue"_s)->property("text"), u"10%"_s);
    press(control(u"Window Opacity"_s, u"slider"_s), Qt::Key_Right);
    EXPECT_DOUBLE_EQ(app().windowOpacity(), 0.35);
}
