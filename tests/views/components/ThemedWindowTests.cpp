#include "theme/HexColor.h"
#include "theme/ThemeLibrary.h"
#include "views/support/ViewTest.h"

#include <QPalette>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class ThemedWindow : public ViewTest {
protected:
    QColor paletteColor(const char* role) {
        return window().property("palette").value<QObject*>()->property(role).value<QColor>();
    }
    bool hasLightAppearance() {
        return paletteColor("window").lightnessF() > 0.5F &&
               paletteColor("windowText").lightnessF() < 0.5F;
    }
};

class FirstWindow : public ViewTest {
protected:
    FirstWindow() { defaults.setBoolean(u"onboardingComplete"_s, true); }
};

constexpr QPoint besideTheRing(4, 300);

} // namespace

TEST_F(ThemedWindow, IsLightForLatteAndDarkForAllOthers) {
    show(u"ThemedWindow { width: 100; height: 100 }"_s);
    for (const ThemeColors& colors : ThemeLibrary::allThemes()) {
        theme.setTheme(colors.name);
        EXPECT_EQ(hasLightAppearance(), colors.name == u"latte") << colors.name.toStdString();
    }
}

TEST_F(ThemedWindow, FadesFromOneThemeToTheNextInFourTenthsOfASecond) {
    theme.setTheme(u"latte"_s);
    show(u"ThemedWindow { width: 100; height: 100 }"_s);
    const QColor latte = hexColor(u"eff1f5");
    const QColor forest = hexColor(u"080f08");
    EXPECT_EQ(color({50, 50}), latte);
    theme.setTheme(u"forest"_s);
    advance(16ms); // the frame that starts it
    EXPECT_EQ(color({50, 50}), latte);
    advance(32ms);
    const int early = latte.red() - color({50, 50}).red();
    EXPECT_GT(early, 0);
    EXPECT_LT(early, 10) << "it eases in";
    advance(168ms);
    EXPECT_NEAR(color({50, 50}).red(), (latte.red() + forest.red()) / 2, 2) << "half of the way";
    advance(180ms);
    EXPECT_NE(color({50, 50}), forest);
    advance(20ms);
    EXPECT_EQ(color({50, 50}), forest);
}

TEST_F(FirstWindow, FollowsTheThemeLive) {
    start();
    show(u"MainWindow {}"_s, appState());
    EXPECT_EQ(color(besideTheRing), hexColor(u"0a0a0a"));
    theme.setTheme(u"glacier"_s);
    advance(500ms);
    EXPECT_EQ(color(besideTheRing), hexColor(u"eef4fb"));
}

TEST_F(FirstWindow, StartsInTheStoredTheme) {
    theme.setTheme(u"nord"_s);
    start();
    show(u"MainWindow {}"_s, appState());
    EXPECT_EQ(color(besideTheRing), hexColor(u"2e3440"));
}
