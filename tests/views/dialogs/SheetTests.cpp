#include "DialogsTest.h"

using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Over a window with a button of its own.
class Sheet : public DialogsTest {
protected:
    void showSheet(const QString& size = u"width: 400; height: 300"_s) {
        show(u"Rectangle { id: below; "_s + size +
             u"; property bool wanted; property int dismissals; property int clicksBelow;"
             "color: 'white';"
             "MouseArea { anchors.fill: parent; onClicked: ++clicksBelow }"
             "GlassIconButton { objectName: 'outer'; x: 300; systemName: 'trash' }"
             "Sheet { isPresented: below.wanted; title: 'Choose'; width: 201;"
             "  onDismissed: { ++dismissals; wanted = false }"
             "  GlassIconButton { objectName: 'first'; systemName: 'trash'; focus: true }"
             "  GlassIconButton { objectName: 'second'; systemName: 'paperclip' } } }"_s);
    }
    void present(bool wanted) {
        root()->setProperty("wanted", wanted);
        settle();
    }
    QQuickItem* panel() { return item(u"sheetContent"_s)->parentItem(); }
    bool hasFocus(const QString& name) { return item(name)->hasActiveFocus(); }
};

} // namespace

TEST_F(Sheet, StandsInTheMiddleInWholePoints) {
    for (const QString& size : {u"width: 400; height: 300"_s, u"width: 433; height: 377"_s}) {
        showSheet(size);
        present(true);
        const QRectF frame = frameOf(u"sheetGround"_s);
        EXPECT_EQ(frame.topLeft(), QPointF(frame.topLeft().toPoint()));
        EXPECT_NEAR(frame.center().x(), root()->width() / 2, 0.5);
        EXPECT_NEAR(frame.center().y(), root()->height() / 2, 0.5);
        EXPECT_EQ(frame.width(), 201);
    }
}

TEST_F(Sheet, EscapeAsksToCloseAndLeavesItsBindingWhole) {
    showSheet();
    for (int round = 1; round <= 3; ++round) {
        SCOPED_TRACE(round);
        EXPECT_FALSE(isSheetShown());
        present(true);
        EXPECT_TRUE(isSheetShown());
        key(Qt::Key_Escape);
        EXPECT_EQ(root()->property("dismissals").toInt(), round);
        EXPECT_FALSE(root()->property("wanted").toBool());
        settle();
    }
}

TEST_F(Sheet, GoesWithoutAskingWhenItIsTakenAway) {
    showSheet();
    present(true);
    present(false);
    EXPECT_FALSE(isSheetShown());
    EXPECT_EQ(root()->property("dismissals").toInt(), 0);
}

TEST_F(Sheet, ComesBackWhenItIsWantedAgainWhileItFades) {
    showSheet();
    present(true);
    root()->setProperty("wanted", false);
    advance(48ms);
    present(true);
    EXPECT_TRUE(isSheetShown());
    EXPECT_EQ(panel()->opacity(), 1);
    EXPECT_EQ(panel()->scale(), 1);
}

TEST_F(Sheet, FadesAndGrowsInAndFadesOut) {
    showSheet();
    root()->setProperty("wanted", true);
    advance(48ms);
    EXPECT_GT(panel()->opacity(), 0);
    EXPECT_LT(panel()->opacity(), 1);
    EXPECT_GT(panel()->scale(), 0.96);
    EXPECT_LT(panel()->scale(), 1);
    advance(200ms);
    EXPECT_EQ(panel()->opacity(), 1);
    EXPECT_EQ(panel()->scale(), 1);
    root()->setProperty("wanted", false);
    advance(64ms);
    EXPECT_TRUE(isSheetShown());
    EXPECT_LT(panel()->opacity(), 1);
    advance(100ms);
    EXPECT_FALSE(isSheetShown());
}

TEST_F(Sheet, DimsTheWindowAndCastsAShadow) {
    showSheet();
    EXPECT_EQ(color({20, 150}), QColor(Qt::white));
    present(true);
    EXPECT_NEAR(color({20, 150}).red(), 153, 1);
    const QRect frame = frameOf(u"sheetGround"_s).toRect();
    EXPECT_LT(color({200, frame.bottom() + 4}).red(), 120);
    EXPECT_LT(color({200, frame.bottom() + 4}).red(), color({200, frame.top() - 4}).red())
        << "it falls downward";
    present(false);
    EXPECT_EQ(color({20, 150}), QColor(Qt::white));
}

TEST_F(Sheet, HasRoundCornersWithALineAllAround) {
    show(u"Rectangle { width: 400; height: 300; color: 'black';"
         "Sheet { isPresented: true; width: 200; height: 200; fill: '#00ff00';"
         "  bottomFill: '#0000ff'; borderColor: '#ff0000'; shadowColor: 'transparent' } }"_s);
    settle();
    const QPoint corner = frameOf(u"sheetGround"_s).topLeft().toPoint();
    const QImage image = grab();
    EXPECT_EQ(image.pixelColor(corner).green(), 0) << "it is round";
    // On the diagonal the line is 14 * (1 - cos 45°) = 4.1 from the corner on both axes.
    EXPECT_GT(image.pixelColor(corner + QPoint(4, 4)).red(), 100);
    EXPECT_GT(image.pixelColor(corner + QPoint(100, 0)).red(), 250);
    EXPECT_EQ(image.pixelColor(corner + QPoint(100, 10)).red(), 0);
    EXPECT_GT(image.pixelColor(corner + QPoint(100, 10)).green(), 230);
    EXPECT_NEAR(image.pixelColor(corner + QPoint(100, 100)).green(), 127, 3);
    EXPECT_GT(image.pixelColor(corner + QPoint(100, 190)).blue(), 230);
}

TEST_F(Sheet, HidesTheWindowFromThePointer) {
    showSheet();
    present(true);
    clickAt({20, 150});
    EXPECT_TRUE(isSheetShown());
    EXPECT_EQ(root()->property("clicksBelow").toInt(), 0);
    present(false);
    clickAt({20, 150});
    EXPECT_EQ(root()->property("clicksBelow").toInt(), 1);
}

TEST_F(Sheet, KeepsTheFocusInside) {
    showSheet();
    present(true);
    EXPECT_TRUE(hasFocus(u"first"_s));
    key(Qt::Key_Tab);
    EXPECT_TRUE(hasFocus(u"second"_s));
    key(Qt::Key_Tab);
    EXPECT_TRUE(hasFocus(u"first"_s));
    key(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_TRUE(hasFocus(u"second"_s));
}

TEST_F(Sheet, IsADialogWithItsTitle) {
    showSheet();
    present(true);
    QAccessibleInterface* const interface = accessible(item(u"sheetContent"_s));
    EXPECT_EQ(interface->role(), QAccessible::Dialog);
    EXPECT_EQ(interface->text(QAccessible::Name), u"Choose"_s);
}

TEST_F(Sheet, StandsStillWhileNothingHappens) {
    showSheet();
    present(true);
    const QImage before = grab();
    advance(2s);
    EXPECT_EQ(grab(), before);
}
