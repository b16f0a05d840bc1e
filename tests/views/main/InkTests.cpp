#include "HeaderViewTest.h"
#include "views/components/CapsuleInk.h"
#include "views/main/LabelInk.h"

#include <cmath>
#include <functional>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

class DrawnCapsule : public CapsuleInk {
public:
    using CapsuleInk::CapsuleInk;

    [[nodiscard]] PlacedImage drawn(double devicePixelRatio) const override {
        ++count;
        return CapsuleInk::drawn(devicePixelRatio);
    }

    mutable int count = 0;
};

/// A capsule of 60 by 20 points.
PlacedImage drawnCapsule(const std::function<void(DrawnCapsule&)>& prepare,
                         double devicePixelRatio = 1) {
    DrawnCapsule capsule;
    capsule.setSize({60, 20});
    capsule.setColor(Qt::red);
    prepare(capsule);
    return capsule.drawn(devicePixelRatio);
}

using InkView = HeaderViewTest;

} // namespace

TEST(CapsuleInk, FillsItsBoundsButForTheCorners) {
    const PlacedImage drawing = drawnCapsule([](DrawnCapsule&) {});
    EXPECT_EQ(drawing.rect, QRectF(0, 0, 60, 20));
    EXPECT_EQ(drawing.image.pixelColor(30, 0), QColor(Qt::red));
    EXPECT_EQ(drawing.image.pixelColor(0, 9).red(), 255);
    EXPECT_EQ(drawing.image.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(drawing.image.pixelColor(59, 19).alpha(), 0);
}

TEST(CapsuleInk, HasAPixelForEachOfTheScreen) {
    const PlacedImage drawing = drawnCapsule([](DrawnCapsule&) {}, 2);
    EXPECT_EQ(drawing.image.size(), QSize(120, 40));
    EXPECT_EQ(drawing.rect, QRectF(0, 0, 60, 20));
}

TEST(CapsuleInk, CanBeAnOutlineWithinItsBounds) {
    const PlacedImage drawing =
        drawnCapsule([](DrawnCapsule& capsule) { capsule.setLineWidth(2); });
    EXPECT_EQ(drawing.image.pixelColor(30, 0), QColor(Qt::red));
    EXPECT_EQ(drawing.image.pixelColor(30, 1), QColor(Qt::red));
    EXPECT_EQ(drawing.image.pixelColor(30, 2).alpha(), 0);
    EXPECT_EQ(drawing.image.pixelColor(30, 10).alpha(), 0);
}

TEST(CapsuleInk, ChangesItsColourFromTheTopLeftToTheBottomRight) {
    const PlacedImage drawing =
        drawnCapsule([](DrawnCapsule& capsule) { capsule.setEndColor(Qt::blue); });
    const auto redAt = [&](int x, int y) { return drawing.image.pixelColor(x, y).red(); };
    EXPECT_GT(redAt(1, 10), 225);
    EXPECT_NEAR(redAt(30, 10), 127, 6);
    EXPECT_LT(redAt(58, 10), 30);
    EXPECT_GT(redAt(30, 0), redAt(30, 19) + 20) << "and from the top to the bottom";
}

TEST(CapsuleInk, HasItsShadowAroundIt) {
    const PlacedImage drawing = drawnCapsule([](DrawnCapsule& capsule) {
        capsule.setColor(QColor(255, 0, 0, 100));
        capsule.setShadowColor(Qt::green);
        capsule.setShadowRadius(6);
    });
    const QPoint origin = -drawing.rect.topLeft().toPoint();
    const auto at = [&](int x, int y) { return drawing.image.pixelColor(origin + QPoint(x, y)); };
    EXPECT_EQ(at(30, 10), QColor(255, 0, 0, 100)) << "not under it";
    EXPECT_EQ(at(30, -1).green(), 255);
    EXPECT_GT(at(30, -1).alpha(), 80);
    EXPECT_GT(at(30, -1).alpha(), at(30, -4).alpha());
    EXPECT_GT(at(30, -4).alpha(), 0);
    EXPECT_EQ(at(30, -3), at(30, 22)) << "the same on both sides";
    EXPECT_EQ(drawing.image.pixelColor(0, 0).alpha(), 0) << "it ends within the picture";
    EXPECT_LE(at(30, -static_cast<int>(origin.y())).alpha(), 2);
}

TEST(CapsuleInk, CanHaveItsShadowLower) {
    const PlacedImage drawing = drawnCapsule([](DrawnCapsule& capsule) {
        capsule.setShadowRadius(6);
        capsule.setShadowOffset(3);
    });
    const QPoint origin = -drawing.rect.topLeft().toPoint();
    const auto alphaAt = [&](int y) {
        return drawing.image.pixelColor(origin + QPoint(30, y)).alpha();
    };
    EXPECT_GT(alphaAt(22), alphaAt(-3) + 40);
    EXPECT_LE(drawing.image.pixelColor(origin.x() + 30, drawing.image.height() - 1).alpha(), 2);
}

TEST(CapsuleInk, IsNothingWithoutASize) {
    EXPECT_TRUE(drawnCapsule([](DrawnCapsule& capsule) { capsule.setWidth(0); }).image.isNull());
}

TEST_F(InkView, IsDrawnAgainOnlyWhenItChanges) {
    show(u"Item { width: 80; height: 40 }"_s);
    DrawnCapsule capsule(root());
    capsule.setSize({60, 20});
    capsule.setColor(Qt::red);
    (void)grab();
    EXPECT_EQ(capsule.count, 1);
    capsule.setColor(Qt::red);
    capsule.setScale(1.04);
    capsule.setOpacity(0.5);
    (void)grab();
    EXPECT_EQ(capsule.count, 1) << "the motion under the pointer is free of it";
    capsule.setShadowRadius(4);
    (void)grab();
    EXPECT_EQ(capsule.count, 2);
}

TEST_F(InkView, ALabelLiesOverTheTextAndTheSymbolThatItStandsFor) {
    const auto pictureOf = [this](const QString& content) {
        show(u"Rectangle { width: 120; height: 30; color: 'black'; %1 }"_s.arg(content));
        return grab();
    };
    const QImage items =
        pictureOf(u"Symbol { x: 4; y: 6; name: 'sparkles'; size: 12; color: 'white' }"
                  "Text { x: 30; y: 5; text: 'OpenCode'; color: 'white';"
                  "font: Typeface.font(13, Font.Bold) }"_s);
    const QImage label =
        pictureOf(u"Text { id: words; x: 30; y: 5; visible: false; text: 'OpenCode';"
                  "font: Typeface.font(13, Font.Bold) }"
                  "LabelInk { anchors.fill: parent; systemName: 'sparkles';"
                  "symbolRect: Qt.rect(4, 6, 14, 14); text: words.text; font: words.font;"
                  "textOrigin: Qt.point(words.x, words.y + words.baselineOffset) }"_s);
    qint64 difference = 0;
    qint64 ink = 0;
    for (int y = 0; y < items.height(); ++y) {
        for (int x = 0; x < items.width(); ++x) {
            difference += std::abs(qGray(items.pixel(x, y)) - qGray(label.pixel(x, y)));
            ink += qGray(items.pixel(x, y));
        }
    }
    EXPECT_GT(ink, 10000);
    // Letters on a transparent picture are a little thinner; one pixel aside it'd be half of it.
    EXPECT_LT(static_cast<double>(difference), 0.15 * static_cast<double>(ink));
}

TEST_F(InkView, ALabelCanBeInAGradient) {
    show(u"Rectangle { width: 100; height: 24; color: 'black'; LabelInk { anchors.fill: parent;"
         "text: 'MMMMMMM'; font: Typeface.font(18, Font.Bold); textOrigin: Qt.point(0, 19);"
         "color: 'red'; endColor: 'blue' } }"_s);
    const QImage picture = grab();
    const auto brightest = [&](int from, int to, int (*channel)(QRgb)) {
        int value = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = from; x < to; ++x) {
                value = std::max(value, channel(picture.pixel(x, y)));
            }
        }
        return value;
    };
    EXPECT_GT(brightest(0, 15, qRed), brightest(0, 15, qBlue) + 80);
    EXPECT_GT(brightest(85, 100, qBlue), brightest(85, 100, qRed) + 80);
}
