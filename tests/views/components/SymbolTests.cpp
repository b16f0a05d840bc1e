#include "theme/SymbolImage.h"
#include "views/components/Symbol.h"
#include "views/support/ViewTest.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

using SymbolView = ViewTest;

class DrawnSymbol : public Symbol {
public:
    using Symbol::Symbol;

    [[nodiscard]] PlacedImage drawn(double devicePixelRatio) const override {
        ++count;
        return Symbol::drawn(devicePixelRatio);
    }

    mutable int count = 0;
};

} // namespace

TEST_F(SymbolView, HasAirAroundTheDrawing) {
    show(u"Symbol { name: 'arrow.down.circle.fill'; size: 40; color: 'red' }"_s);
    EXPECT_EQ(root()->size(), QSizeF(48, 48));
    const QImage image = grab();
    EXPECT_EQ(image.pixelColor(2, 24), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(5, 24), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(42, 24), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(45, 24), QColor(Qt::white));
}

TEST_F(SymbolView, ShowsTheDrawingPixelByPixel) {
    show(
        u"Rectangle { width: 40; height: 40; color: 'black';"
        "Symbol { anchors.centerIn: parent; name: 'gearshape.fill'; size: 14; color: 'white' } }"_s);
    const QImage seen = grab().copy(11, 11, 17, 17);
    const QImage drawing = symbolImage(u"gearshape.fill"_s, 17, Qt::white);
    for (int y = 0; y < 17; ++y) {
        for (int x = 0; x < 17; ++x) {
            ASSERT_NEAR(qRed(seen.pixel(x, y)), qAlpha(drawing.pixel(x, y)), 1) << x << ' ' << y;
        }
    }
}

TEST_F(SymbolView, ChangesWithItsNameAndColour) {
    show(u"Symbol { name: 'xmark'; size: 20; color: 'red' }"_s);
    EXPECT_EQ(color({12, 12}), QColor(Qt::red));
    root()->setProperty("color", QColor(Qt::blue));
    EXPECT_EQ(color({12, 12}), QColor(Qt::blue));
    root()->setProperty("name", u"chevron.up"_s);
    EXPECT_NE(color({12, 12}), QColor(Qt::blue));
}

TEST_F(SymbolView, AnUnknownNameShowsNothing) {
    show(u"Symbol { name: 'no.such.symbol'; size: 20; color: 'red' }"_s);
    const QImage image = grab();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ASSERT_EQ(image.pixelColor(x, y), QColor(Qt::white));
        }
    }
}

TEST_F(SymbolView, IsDrawnAgainOnlyWhenItChanges) {
    show(u"Item { width: 24; height: 24 }"_s);
    DrawnSymbol symbol(root());
    symbol.setName(u"xmark"_s);
    symbol.setSize(20);
    symbol.setColor(Qt::red);
    (void)grab();
    EXPECT_EQ(symbol.count, 1);
    symbol.setColor(Qt::red);
    symbol.setName(u"xmark"_s);
    symbol.setX(0.5);
    (void)grab();
    EXPECT_EQ(symbol.count, 1);
    symbol.setColor(Qt::blue);
    (void)grab();
    EXPECT_EQ(symbol.count, 2);
}

TEST(SymbolDrawing, HasAPixelForEachOfTheScreen) {
    DrawnSymbol symbol;
    symbol.setName(u"mic"_s);
    symbol.setSize(10);
    for (const auto& [ratio, pixels] : {std::pair{1.0, 12}, {1.5, 18}, {2.0, 24}}) {
        const PlacedImage drawing = symbol.drawn(ratio);
        EXPECT_EQ(drawing.image.size(), QSize(pixels, pixels));
        EXPECT_EQ(drawing.rect, QRectF(0, 0, 12, 12));
    }
}

TEST(SymbolDrawing, LiesOnWholePixelsOfALargerItem) {
    DrawnSymbol symbol;
    symbol.setName(u"mic"_s);
    symbol.setWidth(29);
    symbol.setHeight(12);
    EXPECT_EQ(symbol.drawn(1).rect, QRectF(8, 0, 12, 12));
    EXPECT_EQ(symbol.drawn(2).rect, QRectF(8.5, 0, 12, 12));
}
