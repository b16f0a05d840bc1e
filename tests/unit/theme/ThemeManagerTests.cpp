#include "support/fakes/MemoryUserDefaults.h"
#include "theme/ThemeManager.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

class ThemeManagerTest : public ::testing::Test {
protected:
    QString themeAtStart() { return ThemeManager(defaults).current().name; }
    [[nodiscard]] QString stored() const {
        return defaults.string(u"selectedTheme"_s).value_or(u"nothing"_s);
    }

    MemoryUserDefaults defaults;
};

} // namespace

TEST_F(ThemeManagerTest, WithoutAChoiceItIsRazer) {
    EXPECT_EQ(themeAtStart(), u"razer");
    EXPECT_EQ(stored(), u"nothing");
}

TEST_F(ThemeManagerTest, AStoredNameIsTaken) {
    defaults.setString(u"selectedTheme"_s, u"forest"_s);
    EXPECT_EQ(themeAtStart(), u"forest");
}

TEST_F(ThemeManagerTest, AnEmptyAndAnUnknownStoredNameBothGiveRazer) {
    for (const QString& name : {u""_s, u"solarized"_s, u"Latte"_s}) {
        defaults.setString(u"selectedTheme"_s, name);
        EXPECT_EQ(themeAtStart(), u"razer") << name.toStdString();
        EXPECT_EQ(stored(), name);
    }
}

TEST_F(ThemeManagerTest, SettingAThemeTellsTheViewsAndStoresItsName) {
    ThemeManager manager(defaults);
    int changes = 0;
    QObject::connect(&manager, &ThemeManager::currentChanged, [&] { ++changes; });
    manager.setTheme(u"nord"_s);
    EXPECT_EQ(manager.current().name, u"nord");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(stored(), u"nord");
    manager.setTheme(u"nord"_s);
    EXPECT_EQ(changes, 1) << "no redraw without a change";
}

TEST_F(ThemeManagerTest, SettingAnUnknownThemeSelectsRazerAndStoresTheName) {
    ThemeManager manager(defaults);
    manager.setTheme(u"latte"_s);
    manager.setTheme(u"solarized"_s);
    EXPECT_EQ(manager.current().name, u"razer");
    EXPECT_EQ(stored(), u"solarized");
}

TEST_F(ThemeManagerTest, TheLivingInstanceIsTheSharedOne) {
    const ThemeManager manager(defaults);
    EXPECT_EQ(&ThemeManager::shared(), &manager);
}
