#include "views/panel/PanelOnScreen.h"

#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QPoint defaultPosition(332, 768 - 48 - 72);

/// With and without a window manager.
class CompactPanelFocus : public PanelOnScreen, public ::testing::WithParamInterface<bool> {
protected:
    CompactPanelFocus() {
        if (GetParam()) {
            EXPECT_TRUE(desktop.startManager());
        }
    }
};

QDropEvent dropOf(const QMimeData& data) {
    return {QPointF(10, 10), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
            Qt::NoModifier};
}

QDragEnterEvent dragOf(const QMimeData& data) {
    return {QPoint(10, 10), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier};
}

} // namespace

TEST_P(CompactPanelFocus, NeverComesToThePanel) {
    const xcb_window_t terminal = openTerminal();
    FocusWatch watch(desktop, terminal);
    showPanel();
    EXPECT_EQ(watch.losses(), 0) << "shown";

    click(background());
    EXPECT_TRUE(desktop.waitUntil([this] { return app().isRecording(); }));
    EXPECT_EQ(watch.losses(), 0) << "tapped";
    click(middleOf("cancelButton"));
    EXPECT_TRUE(desktop.waitUntil([this] { return !app().isRecording(); }));
    EXPECT_EQ(watch.losses(), 0) << "a button clicked";

    const QPoint before = panel->position();
    drag(background(), background() + QPoint(-100, -200));
    EXPECT_TRUE(
        desktop.waitUntil([&] { return panel->position() == before + QPoint(-100, -200); }));
    EXPECT_EQ(watch.losses(), 0) << "dragged";

    app().switchToCompactMode();
    EXPECT_TRUE(desktop.isShown(static_cast<xcb_window_t>(panel->winId())));
    EXPECT_EQ(watch.losses(), 0) << "raised";
    EXPECT_TRUE(desktop.hasFocus(terminal));
    EXPECT_EQ(QGuiApplication::focusWindow(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutWindowManager, CompactPanelFocus, ::testing::Bool(),
                         [](const auto& managed) {
                             return managed.param ? "underOpenbox" : "withoutManager";
                         });

using CompactPanelWindow = PanelOnScreen;

TEST_F(CompactPanelWindow, StandsWhereTheControllerPutsIt) {
    showPanel();
    EXPECT_EQ(panel->position(), defaultPosition);
    EXPECT_EQ(panel->size(), QSize(360, 72));
}

TEST_F(CompactPanelWindow, IsAPanelAndNeverTheKeyWindow) {
    showPanel();
    const auto all = windows.windows();
    ASSERT_EQ(all.size(), 1U);
    EXPECT_TRUE(all.front()->isPanel());
    EXPECT_TRUE(all.front()->isVisible());
    EXPECT_EQ(windows.keyWindow(), nullptr);
}

TEST_F(CompactPanelWindow, StaysAboveAWindowThatFillsTheScreenAndHasTheFocus) {
    ASSERT_TRUE(desktop.startManager());
    showPanel();
    const xcb_window_t terminal = openTerminal();
    makeFullScreen(terminal);
    // Where its title bar was.
    EXPECT_TRUE(desktop.waitUntil([this] { return screenColor({5, 5}) == Qt::white; }));
    EXPECT_TRUE(desktop.hasFocus(terminal));
    EXPECT_EQ(screenColor(panel->position() + QPoint(180, 2)), QColor(23, 23, 23));
}

TEST_F(CompactPanelWindow, IsOnEveryDesktop) {
    ASSERT_TRUE(desktop.startManager());
    showPanel();
    const xcb_window_t terminal = openTerminal();
    goToDesktop(1);
    ASSERT_TRUE(desktop.waitUntil([&] { return !desktop.isShown(terminal); }));
    EXPECT_TRUE(desktop.isShown(static_cast<xcb_window_t>(panel->winId())));
}

TEST_F(CompactPanelWindow, IsInNoList) {
    ASSERT_TRUE(desktop.startManager());
    showPanel();
    EXPECT_TRUE(desktop.managed().empty());
}

TEST_F(CompactPanelWindow, ShowsWhatIsBehindItsRoundCorners) {
    openTerminal();
    showPanel();
    const QRect frame(panel->position(), panel->size());
    for (const QPoint& corner :
         {frame.topLeft(), frame.topRight(), frame.bottomLeft(), frame.bottomRight()}) {
        EXPECT_EQ(screenColor(corner), Qt::white);
    }
    // Where the arc of 22 points begins.
    EXPECT_EQ(screenColor(frame.topLeft() + QPoint(22, 0)), QColor(23, 23, 23));
    EXPECT_EQ(screenColor(frame.topLeft() + QPoint(5, 5)), Qt::white);
    EXPECT_EQ(screenColor(frame.topLeft() + QPoint(8, 8)), QColor(23, 23, 23));
}

TEST_F(CompactPanelWindow, DraggedByItsBackgroundItMovesAndIsNotTapped) {
    showPanel();
    const QPoint way(100, -300);
    drag(background(), background() + way);
    EXPECT_TRUE(desktop.waitUntil([&] {
        scheduler.advance(1s);
        return storedPosition() == QPointF(defaultPosition + way);
    }));
    EXPECT_EQ(panel->position(), defaultPosition + way);
    EXPECT_FALSE(app().isRecording());
}

TEST_F(CompactPanelWindow, ATapDoesNotMoveItEvenWithAnUnsteadyHand) {
    showPanel();
    movePointer(background());
    press();
    movePointer(background() + QPoint(3, 2));
    release();
    EXPECT_TRUE(desktop.waitUntil([this] { return app().isRecording(); }));
    EXPECT_EQ(panel->position(), defaultPosition);
    app().cancelRecording();
}

TEST_F(CompactPanelWindow, ItsButtonsDoNotDragIt) {
    showPanel();
    const QPoint button = middleOf("cancelButton");
    ASSERT_FALSE(button.isNull());
    drag(button, button + QPoint(100, -300));
    click(background());
    EXPECT_TRUE(desktop.waitUntil([this] { return app().isRecording(); })) << "all of it has come";
    EXPECT_EQ(panel->position(), defaultPosition);
    app().cancelRecording();
}

TEST_F(CompactPanelWindow, ComesBackToWhereItWasDragged) {
    showPanel();
    drag(background(), background() + QPoint(-200, -100));
    const QPoint moved = defaultPosition + QPoint(-200, -100);
    EXPECT_TRUE(desktop.waitUntil([&] { return panel->position() == moved; }));
    app().switchToMainWindow(true);
    EXPECT_EQ(storedPosition(), QPointF(moved));
    app().switchToCompactMode();
    waitForPanel();
    EXPECT_EQ(panel->position(), moved);
}

TEST_F(CompactPanelWindow, MayBeClosedByItsOwnButton) {
    showPanel();
    click(middleOf("cancelButton"));
    EXPECT_TRUE(desktop.waitUntil([this] { return !app().isCompactMode(); }));
    EXPECT_FALSE(panel && panel->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(panel, nullptr);
}

TEST_F(CompactPanelWindow, OpenedAgainAtOnceItMoves) {
    showPanel();
    app().switchToMainWindow(true);
    app().switchToCompactMode();
    waitForPanel();
    const double before = app().compactElapsed();
    scheduler.advance(1s);
    EXPECT_GT(app().compactElapsed(), before);
}

TEST_F(CompactPanelWindow, ClosedItDoesNotMove) {
    showPanel();
    app().switchToMainWindow(true);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const double before = app().compactElapsed();
    scheduler.advance(1s);
    EXPECT_EQ(app().compactElapsed(), before);
}

TEST_F(CompactPanelWindow, TakesDropsOfFilesAsCopies) {
    showPanel();
    QMimeData data;
    data.setUrls({QUrl(u"file:///a/plan.pdf"_s), QUrl(u"https://example.com/a.png"_s),
                  QUrl(u"file:///a/shot.png"_s)});
    auto enter = dragOf(data);
    QCoreApplication::sendEvent(panel, &enter);
    EXPECT_TRUE(enter.isAccepted());
    EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
    auto drop = dropOf(data);
    QCoreApplication::sendEvent(panel, &drop);
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
    scheduler.runPosted();
    EXPECT_EQ(app().attachedImages(), QList{QUrl(u"file:///a/shot.png"_s)});
    EXPECT_EQ(app().draftText(), u"/a/plan.pdf");
}

TEST_F(CompactPanelWindow, RefusesDragsOfTextAndOfWebLinks) {
    showPanel();
    QMimeData text;
    text.setText(u"/a/plan.pdf"_s);
    QMimeData link;
    link.setUrls({QUrl(u"https://example.com/a.png"_s)});
    for (const QMimeData* data : {&text, &link}) {
        auto enter = dragOf(*data);
        QCoreApplication::sendEvent(panel, &enter);
        EXPECT_FALSE(enter.isAccepted());
        auto drop = dropOf(*data);
        QCoreApplication::sendEvent(panel, &drop);
        EXPECT_FALSE(drop.isAccepted());
    }
    scheduler.runPosted();
    EXPECT_TRUE(app().attachedImages().isEmpty());
    EXPECT_EQ(app().draftText(), QString());
}

TEST_F(CompactPanelWindow, AFileOfAnotherProgramIsDroppedIntoTheDraft) {
    ASSERT_TRUE(desktop.startManager());
    showPanel();
    const xcb_window_t source = openDragSource({u"file:///a/two%20words.txt"_s});
    FocusWatch watch(desktop, source);
    dragOntoPanel();
    release();
    EXPECT_TRUE(desktop.waitUntil([this] {
        scheduler.runPosted();
        return app().draftText() == u"/a/two words.txt";
    }));
    EXPECT_EQ(watch.losses(), 0);
}

TEST_F(CompactPanelWindow, ATextOfAnotherProgramIsNot) {
    ASSERT_TRUE(desktop.startManager());
    showPanel();
    openDragSource({u"words"_s});
    dragOntoPanel();
    release();
    EXPECT_TRUE(desktop.waitUntil([this] { return dragLeaves == 1; }));
    scheduler.runPosted();
    EXPECT_EQ(app().draftText(), QString());
}
