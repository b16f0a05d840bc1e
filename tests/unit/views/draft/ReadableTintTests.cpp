#include "theme/HexColor.h"
#include "theme/ThemeLibrary.h"
#include "views/draft/ReadableTint.h"

#include <gtest/gtest.h>

using namespace quorvin;

namespace {

/// What shows of `color` at that opacity.
QColor over(const QColor& ground, const QColor& color, float opacity) {
    const auto mix = [opacity](float below, float above) {
        return below + (above - below) * opacity;
    };
    return QColor::fromRgbF(mix(ground.redF(), color.redF()), mix(ground.greenF(), color.greenF()),
                            mix(ground.blueF(), color.blueF()));
}

} // namespace

TEST(ReadableTint, KnowsTheContrastOfTwoColours) {
    EXPECT_NEAR(ReadableTint::contrast(Qt::white, Qt::black), 21, 1e-4);
    EXPECT_NEAR(ReadableTint::contrast(Qt::black, Qt::white), 21, 1e-4);
    EXPECT_NEAR(ReadableTint::contrast(hexColor(u"767676"), Qt::white), 4.54, 0.01);
    EXPECT_NEAR(ReadableTint::contrast(Qt::red, Qt::red), 1, 1e-4);
}

TEST(ReadableTint, CanBeReadInEveryThemeAtRestAndUnderThePointer) {
    for (const ThemeColors& theme : ThemeLibrary::allThemes()) {
        for (const QColor& role : {theme.accent, theme.error}) {
            SCOPED_TRACE(theme.name.toStdString() + " " + role.name().toStdString());
            const QColor tint = ReadableTint::of(role, theme.bgSurface);
            EXPECT_GE(ReadableTint::contrast(tint, over(theme.bgSurface, tint, 0.14F)), 2.5);
            EXPECT_GE(ReadableTint::contrast(Qt::white, over(theme.bgSurface, tint, 0.9F)), 2.5);
        }
    }
}

TEST(ReadableTint, LeavesAColourThatDoes) {
    const ThemeColors& razer = ThemeLibrary::allThemes().front();
    EXPECT_EQ(ReadableTint::of(razer.accent, razer.bgSurface), razer.accent);
    EXPECT_EQ(ReadableTint::of(hexColor(u"1e66f5"), hexColor(u"e6e9ef")), hexColor(u"1e66f5"));
}

TEST(ReadableTint, KeepsTheHue) {
    const QColor cyan = ReadableTint::of(hexColor(u"00ffff"), hexColor(u"12121a"));
    EXPECT_NEAR(cyan.hslHueF(), 0.5, 0.01);
    EXPECT_LT(cyan.lightnessF(), 0.45);
    const QColor red = ReadableTint::of(hexColor(u"bf616a"), hexColor(u"3b4252"));
    EXPECT_NEAR(red.hslHueF(), hexColor(u"bf616a").hslHueF(), 0.02);
    EXPECT_GT(red.lightnessF(), hexColor(u"bf616a").lightnessF());
}
