#include "HistoryTest.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

using HistoryDialog = HistoryTest;

/// A program with a history that is longer than the store lets it become.
class LongMemory final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QList<quorvin::HistoryEntry> historyEntries READ historyEntries NOTIFY loaded)

public:
    [[nodiscard]] QList<HistoryEntry> historyEntries() const { return m_entries; }
    Q_INVOKABLE void loadHistory() {
        constexpr int count = 5000;
        for (int i = 0; i < count; ++i) {
            m_entries.append({.id = i,
                              .text = u"text %1"_s.arg(i),
                              .language = u"en"_s,
                              .duration = 4.2,
                              .createdAt = QDateTime::fromSecsSinceEpoch(i),
                              .sentTo = u"Claude"_s});
        }
        Q_EMIT loaded();
    }

Q_SIGNALS:
    void loaded();

private:
    QList<HistoryEntry> m_entries;
};

} // namespace

TEST_F(HistoryDialog, LoadsTheHistoryEachTimeItAppears) {
    openWith({u"first"_s});
    EXPECT_EQ(textOf(u"historyTitle"_s), u"Transcription History (1)"_s);
    key(Qt::Key_Escape);
    settle();
    EXPECT_FALSE(app().showHistory());
    remember(u"second"_s);
    open();
    EXPECT_EQ(textOf(u"historyTitle"_s), u"Transcription History (2)"_s);
}

TEST_F(HistoryDialog, HasItsSizeItsFixedColoursAndItsTexts) {
    for (const QString& name : {u"latte"_s, u"synthwave"_s}) {
        theme.setTheme(name);
        close();
        openWith({u"fix it"_s});
        QQuickItem* const ground = item(u"sheetGround"_s);
        EXPECT_EQ(ground->width(), 500);
        EXPECT_EQ(ground->property("radius").toDouble(), 16);
        expectColor(ground->property("color").value<QColor>(), withAlpha(orange, 0.3));
        expectColor(ground->property("fill").value<QColor>(), withAlpha(hexColor(u"1e1e1e"), 0.95));
        expectColor(ground->property("bottomFill").value<QColor>(),
                    withAlpha(hexColor(u"141414"), 0.98));
        expectColor(propertyOf(u"sheetShadow"_s, "color").value<QColor>(),
                    withAlpha(Qt::black, 0.6));
        EXPECT_EQ(propertyOf(u"sheetShadow"_s, "radius").toDouble(), 32);
        expectColor(propertyOf(u"sheetGlow"_s, "color").value<QColor>(), withAlpha(orange, 0.3));
        EXPECT_EQ(propertyOf(u"sheetGlow"_s, "radius").toDouble(), 20);
        expectColor(propertyOf(u"historyTitle"_s, "color").value<QColor>(), orange);
        EXPECT_EQ(textOf(u"historyHint"_s), u"Click to load into draft"_s);
        EXPECT_EQ(propertyOf(u"historyHint"_s, "font").value<QFont>().pixelSize(), 11);
        expectColor(propertyOf(u"historyDivider"_s, "color").value<QColor>(),
                    withAlpha(orange, 0.3));
    }
}

TEST_F(HistoryDialog, IsDarkerBelowThanAbove) {
    openWith({u"fix it"_s});
    const QRect frame = frameOf(u"sheetGround"_s).toRect();
    // Over the dimmed ground of the window, 0a0a0a at 0.6.
    EXPECT_NEAR(color({frame.center().x(), frame.top() + 4}).red(), 0x1e, 2);
    EXPECT_NEAR(color({frame.center().x(), frame.bottom() - 4}).red(), 0x14, 2);
}

TEST_F(HistoryDialog, SaysThatThereIsNothingYet) {
    start();
    showDialog();
    open();
    EXPECT_EQ(textOf(u"historyTitle"_s), u"Transcription History (0)"_s);
    EXPECT_TRUE(item(u"emptyHistory"_s)->isVisible());
    EXPECT_EQ(item(u"emptyHistory"_s)->height(), 350);
    EXPECT_FALSE(item(u"historyList"_s)->isVisible());
    EXPECT_TRUE(item(u"closeButton"_s)->hasActiveFocus());
}

TEST_F(HistoryDialog, ShowsTheNewestFirst) {
    openWith({u"first"_s, u"second"_s, u"third"_s});
    EXPECT_FALSE(item(u"emptyHistory"_s)->isVisible());
    EXPECT_LT(row(u"third"_s)->y(), row(u"second"_s)->y());
    EXPECT_LT(row(u"second"_s)->y(), row(u"first"_s)->y());
    EXPECT_EQ(row(u"second"_s)->y() - row(u"third"_s)->y(), row(u"third"_s)->height() + 6);
}

TEST_F(HistoryDialog, IsAsHighAsItsRowsUpTo350) {
    openWith({u"one"_s});
    EXPECT_EQ(item(u"historyList"_s)->height(), row(u"one"_s)->height() + 40);
    close();
    QStringList texts;
    for (int i = 0; i < 12; ++i) {
        texts.append(u"text %1"_s.arg(i));
    }
    openWith(texts);
    EXPECT_EQ(item(u"historyList"_s)->height(), 350);
}

TEST_F(HistoryDialog, ClearAllForgetsWithoutAsking) {
    openWith({u"first"_s, u"second"_s});
    click(u"clearAllButton"_s);
    EXPECT_TRUE(history().isEmpty());
    EXPECT_TRUE(app().showHistory());
    settle();
    EXPECT_EQ(textOf(u"historyTitle"_s), u"Transcription History (0)"_s);
    EXPECT_TRUE(item(u"emptyHistory"_s)->isVisible());
    EXPECT_TRUE(items(u"historyRow"_s).isEmpty());
}

TEST_F(HistoryDialog, CloseCloses) {
    openWith({u"first"_s});
    click(u"closeButton"_s);
    EXPECT_FALSE(app().showHistory());
    settle();
    EXPECT_FALSE(isSheetShown());
}

TEST_F(HistoryDialog, TheArrowsMoveFromRowToRowAndReturnLoads) {
    openWith({u"third"_s, u"second"_s, u"first"_s});
    EXPECT_TRUE(row(u"first"_s)->hasActiveFocus());
    key(Qt::Key_Up);
    EXPECT_TRUE(row(u"first"_s)->hasActiveFocus());
    key(Qt::Key_Down);
    EXPECT_TRUE(row(u"second"_s)->hasActiveFocus());
    auto* const ground = row(u"second"_s)->property("background").value<QQuickItem*>();
    EXPECT_TRUE(itemsIn(ground, u"focusRing"_s).first()->isVisible());
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Up);
    EXPECT_TRUE(row(u"second"_s)->hasActiveFocus());
    key(Qt::Key_Return);
    EXPECT_EQ(app().draftText(), u"second"_s);
    EXPECT_FALSE(app().showHistory());
}

TEST_F(HistoryDialog, ARowThatTheArrowsReachComesIntoView) {
    QStringList texts;
    for (int i = 0; i < 12; ++i) {
        texts.append(u"text %1"_s.arg(i));
    }
    openWith(texts);
    for (int i = 0; i < 11; ++i) {
        key(Qt::Key_Down);
        advance(200ms);
    }
    const QRectF last = row(u"text 0"_s)->mapRectToScene(row(u"text 0"_s)->boundingRect());
    EXPECT_TRUE(row(u"text 0"_s)->hasActiveFocus());
    EXPECT_TRUE(frameOf(u"historyList"_s).contains(last));
}

TEST_F(HistoryDialog, TabGoesThroughTheButtonsOfTheRowThatIsCurrent) {
    openWith({u"third"_s, u"second"_s, u"first"_s});
    key(Qt::Key_Down);
    for (const QString& name :
         {u"claudeButton"_s, u"openCodeButton"_s, u"copyButton"_s, u"loadButton"_s}) {
        key(Qt::Key_Tab);
        EXPECT_TRUE(part(row(u"second"_s), name)->hasActiveFocus()) << name.toStdString();
    }
    key(Qt::Key_Tab);
    EXPECT_TRUE(item(u"clearAllButton"_s)->hasActiveFocus());
    key(Qt::Key_Tab);
    EXPECT_TRUE(item(u"closeButton"_s)->hasActiveFocus());
    key(Qt::Key_Tab);
    EXPECT_TRUE(row(u"second"_s)->hasActiveFocus());
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    key(Qt::Key_Return);
    EXPECT_EQ(pasteboard.contents, u"second"_s);
    EXPECT_TRUE(app().showHistory());
}

TEST_F(HistoryDialog, ItsFootHasTwoButtons) {
    openWith({u"fix it"_s});
    struct Expected {
        QString name;
        QString text;
        QColor tint;
    };
    for (const Expected& expected :
         {Expected{u"clearAllButton"_s, u"Clear All"_s, hexColor(u"ef4444")},
          Expected{u"closeButton"_s, u"Close"_s, Qt::white}}) {
        SCOPED_TRACE(expected.text.toStdString());
        QQuickItem* const button = item(expected.name);
        const QObject* const label = button->property("contentItem").value<QObject*>();
        auto* const ground = button->property("background").value<QQuickItem*>();
        EXPECT_EQ(button->property("text"), expected.text);
        EXPECT_EQ(button->property("font").value<QFont>().pixelSize(), 13);
        EXPECT_EQ(button->implicitWidth(), label->property("implicitWidth").toDouble() + 2 * 16);
        EXPECT_EQ(button->implicitHeight(), label->property("implicitHeight").toDouble() + 2 * 8);
        EXPECT_EQ(ground->property("radius").toDouble(), 8);
        expectColor(ground->property("color").value<QColor>(), withAlpha(expected.tint, 0.1));
        expectColor(borderColor(ground), withAlpha(expected.tint, 0.2));
    }
}

TEST_F(HistoryDialog, KeepsItsDistances) {
    openWith({u"fix it"_s});
    const QRectF ground = frameOf(u"sheetGround"_s);
    const QRectF title = frameOf(u"historyTitle"_s);
    const QRectF hint = frameOf(u"historyHint"_s);
    EXPECT_EQ(title.topLeft() - ground.topLeft(), QPointF(20, 20));
    EXPECT_EQ(hint.top() - title.bottom(), 12);
    EXPECT_EQ(frameOf(u"historyDivider"_s).top() - hint.bottom(), 12);
    EXPECT_EQ(ground.bottomRight() - frameOf(u"closeButton"_s).bottomRight(), QPointF(20, 20));
    EXPECT_EQ(row(u"fix it"_s)->width(), 460);
}

TEST_F(HistoryDialog, ASecondErrorClosesBeforeTheHistoryDoes) {
    start();
    showOverWindow(u"MainView { anchors.fill: parent; appState: window.appState }"_s);
    open();
    app().showError(u"The disk is full."_s);
    settle();
    EXPECT_TRUE(item(u"defaultButton"_s)->hasActiveFocus());
    key(Qt::Key_Escape);
    EXPECT_FALSE(app().showError());
    EXPECT_TRUE(app().showHistory());
    settle();
    key(Qt::Key_Escape);
    EXPECT_FALSE(app().showHistory());
}

TEST_F(HistoryDialog, TheWindowMayCloseUnderIt) {
    start();
    remember(u"fix it"_s);
    showMainWindow();
    open();
    app().showError(u"The disk is full."_s);
    settle();
    EXPECT_TRUE(window().close());
    settle();
    window().show();
    settle();
    EXPECT_TRUE(isSheetShown());
    key(Qt::Key_Escape);
    settle();
    key(Qt::Key_Escape);
    settle();
    EXPECT_FALSE(isSheetShown());
    open();
    close(); // all of it goes while the sheet is open
}

TEST_F(HistoryDialog, TabStaysInsideInTheMainWindow) {
    start();
    remember(u"fix it"_s);
    showMainWindow();
    open();
    const auto isInSheet = [this] {
        return item(u"sheetContent"_s)->isAncestorOf(window().activeFocusItem());
    };
    EXPECT_TRUE(isInSheet());
    for (int i = 0; i < 10; ++i) {
        key(Qt::Key_Tab);
        EXPECT_TRUE(isInSheet()) << i;
    }
    for (int i = 0; i < 10; ++i) {
        key(Qt::Key_Tab, Qt::ShiftModifier);
        EXPECT_TRUE(isInSheet()) << i;
    }
}

TEST_F(HistoryDialog, MakesOnlyTheRowsInSight) {
    LongMemory memory;
    show(u"Rectangle { id: window; required property QtObject appState; property bool isShown;"
         "width: 580; height: 850; color: 'black';"
         "HistoryDialog { appState: window.appState; isPresented: window.isShown } }"_s,
         {{u"appState"_s, QVariant::fromValue<QObject*>(&memory)}});
    root()->setProperty("isShown", true);
    settle();
    for (int i = 0; i < 20; ++i) {
        key(Qt::Key_Down);
        advance(32ms);
    }
    EXPECT_EQ(textOf(u"historyTitle"_s), u"Transcription History (5000)"_s);
    EXPECT_EQ(propertyOf(u"historyList"_s, "count").toInt(), 5000);
    EXPECT_TRUE(row(u"text 20"_s)->hasActiveFocus());
    EXPECT_LE(items(u"historyRow"_s).size(), 20) << "rows out of sight are not made";
    close(); // before the memory goes
}

#include "HistoryDialogTests.moc"
