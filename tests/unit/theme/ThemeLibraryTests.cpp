#include "theme/ThemeLibrary.h"

#include <QMetaProperty>

#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

const std::vector<std::string> themes = {"razer", "mocha",   "latte",     "neon",
                                         "nord",  "glacier", "synthwave", "forest"};

/// The values of a role in the order of `themes`.
const std::map<std::string, std::vector<std::string>> roles = {
    {"bgBase", {"0a0a0a", "1e1e2e", "eff1f5", "0a0a0f", "2e3440", "eef4fb", "0d0015", "080f08"}},
    {"bgSurface", {"111111", "313244", "e6e9ef", "12121a", "3b4252", "ddeef9", "180028", "0f1e0f"}},
    {"bgOverlay", {"1a1a1a", "45475a", "ccd0da", "1a1a25", "434c5e", "c8e0f0", "220038", "162816"}},
    {"textPrimary",
     {"ffffff", "cdd6f4", "4c4f69", "ffffff", "eceff4", "0d2137", "f0e0ff", "c8f0c8"}},
    {"textSecondary",
     {"b4b4b4", "a6adc8", "5c5f77", "a0a0b0", "d8dee9", "1e4060", "d090ff", "80c880"}},
    {"textMuted", {"666666", "6c7086", "8c8fa1", "606070", "4c566a", "4a7090", "8040a0", "3a6a3a"}},
    {"accent", {"3b82f6", "89b4fa", "1e66f5", "00ffff", "88c0d0", "0070f3", "ff00cc", "30d870"}},
    {"success", {"22c55e", "a6e3a1", "40a02b", "00ff88", "a3be8c", "00b870", "00ff88", "00ff60"}},
    {"recording", {"ff3366", "f38ba8", "d20f39", "ff0066", "bf616a", "e0003a", "ff0044", "ff3030"}},
    {"transcribing",
     {"8b5cf6", "fab387", "fe640b", "ff8800", "d08770", "0070f3", "ff8800", "30ccff"}},
    {"border", {"2a2a2a", "45475a", "ccd0da", "2a2a35", "4c566a", "aaccdd", "3a0060", "1a3a1a"}},
    {"claude", {"8b5cf6", "8b5cf6", "8b5cf6", "cc00ff", "b48ead", "7040e0", "cc44ff", "60aaff"}},
    {"opencode", {"10b981", "10b981", "10b981", "00ff88", "a3be8c", "00b870", "00ff88", "00ff60"}},
    {"warning", {"ffcc00", "f9e2af", "df8e1d", "ffcc00", "ebcb8b", "e08800", "ffcc00", "d0c030"}},
    {"error", {"ff3366", "f38ba8", "d20f39", "ff0066", "bf616a", "e0003a", "ff0044", "ff3030"}},
};

std::string hex(const QColor& color) {
    return color.name(QColor::HexRgb).mid(1).toStdString();
}

} // namespace

TEST(ThemeLibrary, OffersEightThemesInTheirOrder) {
    ASSERT_EQ(ThemeLibrary::allThemes().size(), themes.size());
    for (std::size_t i = 0; i < themes.size(); ++i) {
        EXPECT_EQ(ThemeLibrary::allThemes().at(i).name.toStdString(), themes[i]);
    }
    EXPECT_EQ(ThemeLibrary::razer().name, u"razer");
}

TEST(ThemeLibrary, EveryRoleOfEveryThemeHasItsValue) {
    const QMetaObject& metaObject = ThemeColors::staticMetaObject;
    int compared = 0;
    for (int i = 0; i < metaObject.propertyCount(); ++i) {
        const QMetaProperty property = metaObject.property(i);
        if (property.metaType() != QMetaType::fromType<QColor>()) {
            continue;
        }
        const auto expected = roles.find(property.name());
        ASSERT_NE(expected, roles.end()) << property.name();
        for (std::size_t theme = 0; theme < themes.size(); ++theme) {
            const auto color =
                property.readOnGadget(&ThemeLibrary::allThemes().at(theme)).value<QColor>();
            EXPECT_EQ(hex(color), expected->second.at(theme))
                << themes[theme] << ' ' << property.name();
            EXPECT_EQ(color.alpha(), 255);
            ++compared;
        }
    }
    EXPECT_EQ(compared, 8 * 15);
}

TEST(ThemeLibrary, TwoColoursAreTheSameEverywhere) {
    EXPECT_EQ(hex(Theme::magenta()), "ec4899");
    EXPECT_EQ(hex(Theme::cyan()), "06b6d4");
}

TEST(ThemeLibrary, OnlyLatteGoesWithTheLightAppearance) {
    for (const ThemeColors& theme : ThemeLibrary::allThemes()) {
        EXPECT_EQ(theme.usesLightAppearance(), theme.name == u"latte") << theme.name.toStdString();
    }
}
