#include "views/components/NeonGlow.h"

#include <cmath>

#include <gtest/gtest.h>

using namespace quorvin;

namespace {

constexpr int side = 41;
constexpr int middle = side / 2;

/// A square of 9 pixels in the middle of the mask.
QImage glowOfSquare(double radius) {
    QImage mask(side, side, QImage::Format_Alpha8);
    mask.fill(Qt::transparent);
    for (int y = middle - 4; y <= middle + 4; ++y) {
        std::fill_n(mask.scanLine(y) + middle - 4, 9, uchar(255));
    }
    return neonGlow(mask, QColor(0, 229, 255), radius);
}

int alphaAt(const QImage& glow, int right) {
    return qAlpha(glow.pixel(middle + right, middle));
}

} // namespace

TEST(NeonGlow, LaysThreeShadowsOverEachOther) {
    // Far inside a wide shape each shadow has its full opacity.
    QImage mask(side, side, QImage::Format_Alpha8);
    mask.fill(Qt::white);
    const QImage glow = neonGlow(mask, Qt::red, 4);
    const double together = 1 - (1 - 0.9) * (1 - 0.55) * (1 - 0.3);
    EXPECT_NEAR(qAlpha(glow.pixel(middle, middle)), std::lround(together * 255), 1);
}

TEST(NeonGlow, FadesWithTheDistanceAndEndsWithTheRadius) {
    const QImage glow = glowOfSquare(4);
    EXPECT_GT(alphaAt(glow, 5), 60);
    EXPECT_GT(alphaAt(glow, 5), alphaAt(glow, 7));
    EXPECT_GT(alphaAt(glow, 7), alphaAt(glow, 9));
    EXPECT_GT(alphaAt(glow, 8), 0);
    EXPECT_LE(alphaAt(glow, 11), 2);
}

TEST(NeonGlow, ReachesTheSameInEveryDirection) {
    const QImage glow = glowOfSquare(4);
    for (const QPoint& corner : {QPoint(26, 20), QPoint(14, 20), QPoint(20, 26), QPoint(20, 14)}) {
        EXPECT_EQ(glow.pixel(corner), glow.pixel(26, 20));
    }
}

TEST(NeonGlow, HasTheColourThroughout) {
    const QColor color = glowOfSquare(4).pixelColor(middle + 5, middle);
    EXPECT_EQ(color.red(), 0);
    EXPECT_NEAR(color.green(), 229, 2);
    EXPECT_EQ(color.blue(), 255);
}
