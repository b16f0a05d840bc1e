#include "views/components/GaussianBlur.h"

#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

using namespace quorvin;

namespace {

constexpr int side = 61;
constexpr int middle = side / 2;

QImage emptyMask() {
    QImage mask(side, side, QImage::Format_Alpha8);
    mask.fill(Qt::transparent);
    return mask;
}

/// Opaque from the middle column to the right edge.
QImage halfPlane() {
    QImage mask = emptyMask();
    for (int y = 0; y < side; ++y) {
        std::fill_n(mask.scanLine(y) + middle, side - middle, uchar(255));
    }
    return mask;
}

int alphaAt(const QImage& mask, int x, int y) {
    return mask.constScanLine(y)[x];
}

} // namespace

TEST(GaussianBlur, HasTheCurveOfTheErrorFunctionAtAStraightEdge) {
    constexpr double radius = 8; // a standard deviation of 4
    const QImage blurred = gaussianBlur(halfPlane(), radius);
    for (const int distance : {-8, -4, 0, 4, 8}) {
        const double deviations = (distance + 0.5) / (radius / 2);
        const double expected = 255 * std::erfc(-deviations / std::numbers::sqrt2) / 2;
        EXPECT_NEAR(alphaAt(blurred, middle + distance, middle), expected, 2) << distance;
    }
}

TEST(GaussianBlur, SpreadsInEveryDirectionAlike) {
    QImage mask = emptyMask();
    for (int y = middle - 3; y <= middle + 3; ++y) {
        std::fill_n(mask.scanLine(y) + middle - 3, 7, uchar(255));
    }
    const QImage blurred = gaussianBlur(mask, 6);
    const int right = alphaAt(blurred, middle + 5, middle);
    EXPECT_GT(right, 20);
    EXPECT_EQ(alphaAt(blurred, middle - 5, middle), right);
    EXPECT_EQ(alphaAt(blurred, middle, middle + 5), right);
    EXPECT_EQ(alphaAt(blurred, middle, middle - 5), right);
}

TEST(GaussianBlur, LeavesAnEvenMaskAsItIsAwayFromItsEdges) {
    QImage mask(side, side, QImage::Format_Alpha8);
    mask.fill(Qt::black); // opaque
    EXPECT_EQ(alphaAt(gaussianBlur(mask, 10), middle, middle), 255);
}

TEST(GaussianBlur, KeepsTheShapeOfAMaskThatIsNotSquare) {
    QImage mask(40, 10, QImage::Format_Alpha8);
    mask.fill(Qt::transparent);
    mask.scanLine(2)[30] = 255;
    const QImage blurred = gaussianBlur(mask, 2);
    EXPECT_EQ(blurred.size(), QSize(40, 10));
    EXPECT_GT(alphaAt(blurred, 30, 2), alphaAt(blurred, 31, 2));
    EXPECT_GT(alphaAt(blurred, 31, 2), 0);
    EXPECT_EQ(alphaAt(blurred, 2, 8), 0);
}

TEST(GaussianBlur, DoesNothingWithoutARadiusOrAnImage) {
    EXPECT_EQ(gaussianBlur(halfPlane(), 0), halfPlane());
    EXPECT_TRUE(gaussianBlur(QImage(), 4).isNull());
}
