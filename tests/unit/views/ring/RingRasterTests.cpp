#include "views/ring/RingRaster.h"
#include "views/ring/RingStyles.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <limits>
#include <numbers>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

const RingInk white{Qt::white, 1};

/// Of the whole image, in pixels; what is half covered counts half.
double coveredArea(const QImage& image) {
    double area = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            area += image.pixelColor(x, y).alphaF();
        }
    }
    return area;
}

int alphaAt(const QImage& image, int x, int y) {
    return qAlpha(image.pixel(x, y));
}

/// The same by the painter's paths.
QImage paintedByPaths(const RingPicture& picture, QSizeF size, double devicePixelRatio) {
    QImage image((size * devicePixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(devicePixelRatio, devicePixelRatio);
    for (const RingShape& shape : picture.shapes()) {
        const auto points = picture.points(shape);
        QColor color = shape.ink.color;
        color.setAlphaF(static_cast<float>(std::min(shape.ink.opacity, 1.0)));
        QPainterPath path(points.front());
        if (points.size() == 1) {
            path = QPainterPath();
            path.addEllipse(points.front(), shape.radius, shape.radius);
        }
        for (const QPointF& point : points.subspan(1)) {
            path.lineTo(point);
        }
        if (shape.kind == RingShape::Kind::filledCircle) {
            painter.fillPath(path, color);
            continue;
        }
        if (shape.kind == RingShape::Kind::closedPath) {
            path.closeSubpath();
        }
        painter.strokePath(path,
                           QPen(color, shape.width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    }
    return image;
}

int difference(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))});
}

/// Of a channel, over the pixels of both.
double meanDifference(const QImage& a, const QImage& b) {
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            sum += difference(a.pixel(x, y), b.pixel(x, y));
        }
    }
    return sum / (a.width() * a.height());
}

} // namespace

TEST(RingRaster, FillsACircleOfItsArea) {
    for (const double radius : {0.2, 0.7, 3.0, 12.5, 44.0}) {
        RingPicture picture;
        picture.fillCircle({50.3, 49.8}, radius, white);
        const QImage image = RingRaster().painted(picture, {100, 100}, 1);
        EXPECT_NEAR(coveredArea(image), std::numbers::pi * radius * radius, 0.02 + 0.005 * radius)
            << radius;
    }
}

TEST(RingRaster, StrokesACircleOfItsWidth) {
    RingPicture picture;
    picture.strokeCircle({50, 50}, 40, white, 3);
    const QImage image = RingRaster().painted(picture, {100, 100}, 1);
    EXPECT_NEAR(coveredArea(image), 2 * std::numbers::pi * 40 * 3, 1);
    EXPECT_EQ(alphaAt(image, 50, 50), 0);
    EXPECT_EQ(alphaAt(image, 89, 50), 255);
    EXPECT_EQ(alphaAt(image, 92, 50), 0);
}

TEST(RingRaster, StrokesACircleThickerThanItIsAsADisc) {
    RingPicture picture;
    picture.strokeCircle({10, 10}, 2, white, 6);
    EXPECT_NEAR(coveredArea(RingRaster().painted(picture, {20, 20}, 1)), std::numbers::pi * 25,
                0.2);
}

TEST(RingRaster, StrokesASegmentWithoutCaps) {
    RingPicture picture;
    picture.strokeSegment({10, 10}, {30, 10}, white, 2);
    const QImage image = RingRaster().painted(picture, {40, 20}, 1);
    EXPECT_NEAR(coveredArea(image), 40, 0.01);
    EXPECT_EQ(alphaAt(image, 9, 9), 0);
    EXPECT_EQ(alphaAt(image, 10, 9), 255);
    EXPECT_EQ(alphaAt(image, 29, 10), 255);
    EXPECT_EQ(alphaAt(image, 30, 10), 0);
}

TEST(RingRaster, CoversAPixelByTheShareThatLiesInIt) {
    RingPicture picture;
    picture.strokeSegment({2.25, 3}, {6, 3}, white, 1);
    const QImage image = RingRaster().painted(picture, {8, 8}, 1);
    EXPECT_NEAR(alphaAt(image, 4, 2), 127.5, 0.5);
    EXPECT_NEAR(alphaAt(image, 4, 3), 127.5, 0.5);
    EXPECT_NEAR(alphaAt(image, 2, 3), 255 * 0.375, 0.6);
}

TEST(RingRaster, StrokesAClosedPathWithItsCorners) {
    RingPicture picture;
    const auto points = picture.strokeClosedPath(4, white, 2);
    points[0] = {10, 10};
    points[1] = {30, 10};
    points[2] = {30, 30};
    points[3] = {10, 30};
    const QImage image = RingRaster().painted(picture, {40, 40}, 1);
    EXPECT_NEAR(coveredArea(image), 22 * 22 - 18 * 18, 0.01);
    EXPECT_EQ(alphaAt(image, 9, 9), 255);
    EXPECT_EQ(alphaAt(image, 20, 20), 0);
}

TEST(RingRaster, PaintsOneShapeOverTheOther) {
    RingPicture picture;
    picture.fillCircle({10, 10}, 8, {Qt::red, 1});
    picture.fillCircle({10, 10}, 8, {Qt::blue, 0.5});
    const QColor color = RingRaster().painted(picture, {20, 20}, 1).pixelColor(10, 10);
    EXPECT_NEAR(color.red(), 127.5, 1);
    EXPECT_EQ(color.green(), 0);
    EXPECT_NEAR(color.blue(), 127.5, 1);
    EXPECT_EQ(color.alpha(), 255);
}

TEST(RingRaster, HasAllPixelsOfTheScale) {
    RingPicture picture;
    picture.fillCircle({10, 10}, 5, white);
    const QImage image = RingRaster().painted(picture, {20, 20}, 2);
    EXPECT_EQ(image.size(), QSize(40, 40));
    EXPECT_NEAR(coveredArea(image), 100 * std::numbers::pi, 0.3);
    EXPECT_EQ(RingRaster().painted(picture, {20.2, 20}, 1.5).size(), QSize(31, 30));
}

TEST(RingRaster, CutsOffWhatLeavesTheImage) {
    RingPicture picture;
    picture.fillCircle({0, 0}, 10, white);
    picture.fillCircle({40, 40}, 10, white);
    picture.strokeSegment({-50, 20}, {90, 20}, white, 2);
    picture.strokeSegment({20, -1000}, {60, -1000}, white, 2);
    const QImage image = RingRaster().painted(picture, {40, 40}, 1);
    EXPECT_NEAR(coveredArea(image), 2 * std::numbers::pi * 100 / 4 + 80, 0.3);
    EXPECT_EQ(alphaAt(image, 39, 39), 255);
    EXPECT_EQ(alphaAt(image, 20, 10), 0);
}

TEST(RingRaster, LeavesOutWhatIsNoNumberOrHasNoLength) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    RingPicture picture;
    picture.fillCircle({nan, 5}, 3, white);
    picture.fillCircle({5, 5}, std::numeric_limits<double>::infinity(), white);
    picture.strokeCircle({5, 5}, nan, white, 1);
    picture.strokeSegment({5, 5}, {5, 5}, white, 2);
    for (QPointF& point : picture.strokeClosedPath(5, white, 2)) {
        point = {5, 5};
    }
    EXPECT_EQ(coveredArea(RingRaster().painted(picture, {10, 10}, 1)), 0);
}

TEST(RingRaster, PaintsANewImageWhileTheLastIsStillShown) {
    RingRaster raster;
    RingPicture picture;
    picture.fillCircle({5, 5}, 4, white);
    const QImage first = raster.painted(picture, {10, 10}, 1);
    const QImage copy = first.copy();
    picture.clear();
    const QImage second = raster.painted(picture, {10, 10}, 1);
    const QImage third = raster.painted(picture, {10, 10}, 1);
    EXPECT_EQ(first, copy);
    EXPECT_EQ(coveredArea(second), 0);
    EXPECT_EQ(coveredArea(third), 0);
}

TEST(RingRaster, PaintsEveryStyleAsThePainterDoes) {
    for (const QString& style : {u"wave"_s, u"pulse"_s, u"comet"_s, u"bars"_s, u"orbit"_s,
                                 u"nova"_s, u"dna"_s, u"plasma"_s, u"radar"_s}) {
        for (const double devicePixelRatio : {1.0, 2.0}) {
            constexpr QSizeF size(300, 300);
            RingPicture picture;
            drawRing(picture,
                     {.size = size,
                      .mode = RingMode::recording,
                      .time = 12.5,
                      .smoothLevel = 0.6,
                      .peakLevel = 0.8,
                      .showImpact = true,
                      .impactPhase = 0.4},
                     style);
            const QImage image = RingRaster().painted(picture, size, devicePixelRatio);
            EXPECT_LT(meanDifference(image, paintedByPaths(picture, size, devicePixelRatio)), 1.5)
                << style.toStdString() << " at " << devicePixelRatio;
            EXPECT_GT(coveredArea(image), 1000);
        }
    }
}

TEST(RingRaster, PaintsWhatASurfaceTooSmallForTheBarsStillHolds) {
    const auto barsIn = [](double side) {
        RingPicture picture;
        drawRing(picture, {.size = {side, side}, .time = 3}, u"bars"_s);
        return coveredArea(RingRaster().painted(picture, {side, side}, 2));
    };
    EXPECT_GT(barsIn(80), 100);
    EXPECT_EQ(barsIn(20), 0) << "the circle is around it";
}
