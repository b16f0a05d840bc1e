#include "DialogsTest.h"
#include "theme/HexColor.h"
#include "views/dialogs/HistoryTexts.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

const QColor orange = hexColor(u"f97316");
const QColor purple = hexColor(u"8b5cf6");
const QColor green = hexColor(u"10b981");

class HistoryDialog : public DialogsTest {
protected:
    void showDialog() {
        showOverWindow(u"HistoryDialog { appState: window.appState;"
                       "isPresented: window.appState.showHistory;"
                       "onDismissed: window.appState.showHistory = false }"_s);
    }
    void open() {
        app().setShowHistory(true);
        settle();
    }
    /// With these texts in the history, the last one on top.
    void openWith(const QStringList& texts) {
        start();
        for (const QString& text : texts) {
            remember(text);
        }
        showDialog();
        open();
    }
    /// The row with that text.
    QQuickItem* row(const QString& text) {
        for (QQuickItem* candidate : items(u"historyRow"_s)) {
            if (candidate->property("text").toString() == text) {
                return candidate;
            }
        }
        ADD_FAILURE() << "no row " << text.toStdString();
        return nullptr;
    }
    QQuickItem* part(QQuickItem* row, const QString& name) { return itemsIn(row, name).value(0); }
    static QColor fill(QQuickItem* rectangle) {
        return rectangle->property("color").value<QColor>();
    }
    void hoverIn(QQuickItem* row, const QString& name) {
        hoverAt(middleOf(part(row, name)));
        advance(300ms);
    }
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
        expectColor(borderColor(ground), withAlpha(orange, 0.3));
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

TEST_F(HistoryDialog, ARowShowsTextBadgeAndMeta) {
    start();
    remember(QString(50, u'x'));
    remember(QString(51, u'y'), u"Claude"_s, 12.34, u"de"_s);
    remember(u"other"_s, u"OpenCode"_s, 3, QString());
    remember(u"unknown"_s, u"Somebody"_s);
    showDialog();
    open();
    QQuickItem* const whole = row(QString(50, u'x'));
    QQuickItem* const cut = row(QString(50, u'y') + u"..."_s);
    QQuickItem* const other = row(u"other"_s);
    EXPECT_FALSE(part(whole, u"badge"_s)->isVisible());
    EXPECT_EQ(part(cut, u"badgeText"_s)->property("text"), u"→ Claude"_s);
    expectColor(fill(part(cut, u"badge"_s)), purple);
    EXPECT_EQ(part(other, u"badgeText"_s)->property("text"), u"→ OpenCode"_s);
    expectColor(fill(part(other, u"badge"_s)), green);
    expectColor(fill(part(row(u"unknown"_s), u"badge"_s)), green);
    EXPECT_EQ(part(cut, u"badge"_s)->property("radius").toDouble(), 10);
    const HistoryEntry entry = app().historyEntries().at(2);
    EXPECT_EQ(part(cut, u"meta"_s)->property("text").toString(), HistoryTexts::meta(entry));
    EXPECT_TRUE(HistoryTexts::meta(entry).endsWith(u" | 12.3s | de"_s));
    EXPECT_TRUE(part(other, u"meta"_s)->property("text").toString().endsWith(u" | 3.0s"_s));
}

TEST_F(HistoryDialog, ARowLightsUpUnderThePointer) {
    openWith({u"fix it"_s});
    QQuickItem* const ground = part(row(u"fix it"_s), u"rowGround"_s);
    EXPECT_EQ(ground->property("radius").toDouble(), 10);
    expectColor(fill(ground), withAlpha(Qt::white, 0.06));
    expectColor(borderColor(ground), withAlpha(Qt::white, 0.15));
    hoverIn(row(u"fix it"_s), u"excerpt"_s);
    EXPECT_TRUE(row(u"fix it"_s)->property("isHovered").toBool());
    expectColor(fill(ground), withAlpha(orange, 0.12));
    expectColor(borderColor(ground), orange);
    hoverIn(row(u"fix it"_s), u"copyButton"_s);
    expectColor(fill(ground), withAlpha(orange, 0.12));
    leave();
    advance(300ms);
    expectColor(fill(ground), withAlpha(Qt::white, 0.06));
}

TEST_F(HistoryDialog, TheButtonsOfARowHaveTheirLooks) {
    openWith({u"fix it"_s});
    struct Expected {
        QString name;
        QString label;
        QColor color;
    };
    for (const Expected& expected :
         {Expected{u"claudeButton"_s, u"Claude"_s, purple},
          Expected{u"openCodeButton"_s, u"OpenCode"_s, green},
          Expected{u"copyButton"_s, u"Copy"_s, orange},
          Expected{u"loadButton"_s, u"Load"_s, orange}}) {
        SCOPED_TRACE(expected.label.toStdString());
        QQuickItem* const button = part(row(u"fix it"_s), expected.name);
        QQuickItem* const ground = part(button, u"actionGround"_s);
        EXPECT_EQ(button->property("label"), expected.label);
        EXPECT_EQ(button->property("font").value<QFont>().pixelSize(), 10);
        EXPECT_EQ(ground->property("radius").toDouble(), 6);
        leave();
        advance(300ms);
        expectColor(fill(ground), withAlpha(expected.color, 0.08));
        expectColor(borderColor(ground), withAlpha(expected.color, 0.3));
        hoverIn(row(u"fix it"_s), expected.name);
        expectColor(fill(ground), withAlpha(expected.color, 0.9));
        expectColor(borderColor(ground), withAlpha(expected.color, 0.6));
    }
}

TEST_F(HistoryDialog, AClickOnARowOrOnLoadTakesItIntoTheDraft) {
    openWith({u"first"_s, u"second"_s});
    app().setDraftText(u"old"_s);
    clickIn(row(u"first"_s), u"excerpt"_s);
    EXPECT_EQ(app().draftText(), u"first"_s);
    EXPECT_FALSE(app().showHistory());
    settle();
    open();
    clickIn(row(u"second"_s), u"loadButton"_s);
    EXPECT_EQ(app().draftText(), u"second"_s);
    EXPECT_FALSE(app().showHistory());
}

TEST_F(HistoryDialog, CopyOnlyCopies) {
    const QString text = u"A text of more than fifty characters, which is copied as a whole."_s;
    openWith({text});
    pasteboard.contents = u"old"_s;
    clickIn(row(HistoryTexts::excerpt(text)), u"copyButton"_s);
    EXPECT_EQ(pasteboard.contents, text);
    EXPECT_TRUE(app().showHistory());
    EXPECT_EQ(app().draftText(), QString());
}

TEST_F(HistoryDialog, TheAgentsButtonsSendTheText) {
    openWith({u"fix it"_s});
    runAgent(u"claude"_s, 1001);
    runAgent(u"opencode"_s, 1002);
    app().setAgentsIncluded(false);
    clickIn(row(u"fix it"_s), u"claudeButton"_s);
    EXPECT_FALSE(app().showHistory());
    scheduler.advance(2s);
    EXPECT_EQ(pasteboard.contents, u"fix it"_s);
    EXPECT_TRUE(feed().contains(u"Sent to Claude successfully"_s));
    settle();
    open();
    clickIn(row(u"fix it"_s), u"openCodeButton"_s);
    scheduler.advance(2s);
    EXPECT_TRUE(feed().contains(u"Sent to OpenCode successfully"_s));
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
    EXPECT_FALSE(item(u"sheetContent"_s)->isVisible());
}

TEST_F(HistoryDialog, TheArrowsMoveFromRowToRowAndReturnLoads) {
    openWith({u"third"_s, u"second"_s, u"first"_s});
    EXPECT_TRUE(row(u"first"_s)->hasActiveFocus());
    key(Qt::Key_Up);
    EXPECT_TRUE(row(u"first"_s)->hasActiveFocus());
    key(Qt::Key_Down);
    EXPECT_TRUE(row(u"second"_s)->hasActiveFocus());
    EXPECT_TRUE(part(row(u"second"_s), u"focusRing"_s)->isVisible());
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

TEST_F(HistoryDialog, TellsItsRowsToThoseWhoCantSeeThem) {
    openWith({u"fix it"_s});
    QAccessibleInterface* const entry = accessible(row(u"fix it"_s));
    EXPECT_EQ(entry->role(), QAccessible::ListItem);
    EXPECT_EQ(entry->text(QAccessible::Name), u"fix it"_s);
    EXPECT_TRUE(entry->text(QAccessible::Description).endsWith(u" | 4.2s | en"_s));
    EXPECT_EQ(accessible(item(u"historyList"_s))->role(), QAccessible::List);
    QAccessibleInterface* const copy = accessible(part(row(u"fix it"_s), u"copyButton"_s));
    EXPECT_EQ(copy->text(QAccessible::Name), u"Copy"_s);
    entry->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(app().draftText(), u"fix it"_s);
}

TEST_F(HistoryDialog, MakesOnlyTheRowsInViewOfThousands) {
    start();
    show(u"Rectangle { id: window; width: 580; height: 850; color: 'black';"
         "QtObject { id: program; property var historyEntries: []; property bool showHistory: true;"
         "  function loadHistory() { const rows = [];"
         "    for (let i = 0; i < 5000; ++i) rows.push({ text: 'text ' + i, sentTo: '',"
         "      language: 'en', duration: i, createdAt: new Date(0), id: i });"
         "    historyEntries = rows } }"
         "property bool isShown; HistoryDialog { objectName: 'dialog'; appState: program;"
         "  isPresented: window.isShown } }"_s);
    root()->setProperty("isShown", true);
    settle();
    EXPECT_EQ(textOf(u"historyTitle"_s), u"Transcription History (5000)"_s);
    EXPECT_EQ(propertyOf(u"historyList"_s, "count").toInt(), 5000);
    EXPECT_GE(items(u"historyRow"_s).size(), 4);
    EXPECT_LE(items(u"historyRow"_s).size(), 20);
}
