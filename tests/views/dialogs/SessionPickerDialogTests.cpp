#include "DialogsTest.h"
#include "theme/HexColor.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class SessionPickerDialog : public DialogsTest {
protected:
    void showDialog() {
        start();
        showOverWindow(u"SessionPickerDialog { appState: window.appState;"
                       "isPresented: window.appState.showSessionPicker;"
                       "onDismissed: window.appState.showSessionPicker = false }"_s);
    }
    void showWith(int sessions) {
        showDialog();
        openPicker(sessions);
        settle();
    }
    void showOpenCode(int sessions) {
        showDialog();
        for (int i = 0; i < sessions; ++i) {
            runAgent(u"opencode"_s, 2001 + i);
        }
        app().setDraftText(u"fix it"_s);
        app().sendToOpenCode();
        scheduler.advance(2s);
        settle();
    }
    QQuickItem* row(int index) {
        for (QQuickItem* candidate : items(u"sessionRow"_s)) {
            if (qRound(candidate->y() / 60) == index) {
                return candidate;
            }
        }
        ADD_FAILURE() << "no row " << index;
        return nullptr;
    }
    QQuickItem* part(QQuickItem* row, const QString& name) { return itemsIn(row, name).value(0); }
    static QColor colorOf(QQuickItem* item) { return item->property("color").value<QColor>(); }
};

} // namespace

TEST_F(SessionPickerDialog, SaysWhatItAsks) {
    showWith(3);
    EXPECT_EQ(textOf(u"pickerTitle"_s), u"Select Claude Client"_s);
    EXPECT_EQ(textOf(u"pickerCount"_s), u"3 clients found · click to send"_s);
    QQuickItem* const ground = item(u"sheetGround"_s);
    EXPECT_EQ(ground->width(), 440);
    EXPECT_EQ(ground->property("radius").toDouble(), 14);
    expectColor(ground->property("color").value<QColor>(), withAlpha(purple, 0.3));
    expectColor(propertyOf(u"sheetShadow"_s, "color").value<QColor>(), withAlpha(Qt::black, 0.5));
    EXPECT_EQ(propertyOf(u"sheetShadow"_s, "radius").toDouble(), 24);
    EXPECT_EQ(frameOf(u"sheetShadow"_s).top() - frameOf(u"sheetGround"_s).top(), 10);
    expectColor(propertyOf(u"pickerDivider"_s, "color").value<QColor>(),
                withAlpha(Qt::white, 0.06));
}

TEST_F(SessionPickerDialog, StandsOnTheSurfaceOfTheTheme) {
    theme.setTheme(u"latte"_s);
    showWith(2);
    expectColor(propertyOf(u"sheetGround"_s, "fill").value<QColor>(), hexColor(u"e6e9ef"));
    expectColor(propertyOf(u"pickerTitle"_s, "color").value<QColor>(), hexColor(u"4c4f69"));
    theme.setTheme(u"nord"_s);
    advance(500ms);
    expectColor(propertyOf(u"sheetGround"_s, "fill").value<QColor>(), hexColor(u"3b4252"));
}

TEST_F(SessionPickerDialog, IsAsHighAsItsRowsUpToFourAndAHalf) {
    for (const auto& [sessions, height] :
         {std::pair(2, 120.0), std::pair(3, 180.0), std::pair(4, 240.0), std::pair(5, 270.0),
          std::pair(7, 270.0)}) {
        showWith(sessions);
        EXPECT_EQ(item(u"sessionList"_s)->height(), height) << sessions;
        close();
        processes.rows.clear();
    }
}

TEST_F(SessionPickerDialog, ARowShowsItsSession) {
    showWith(2);
    QQuickItem* const second = row(1);
    EXPECT_EQ(part(second, u"initial"_s)->property("text"), u"C"_s);
    EXPECT_EQ(part(second, u"sessionTitle"_s)->property("text"), u"project1002"_s);
    EXPECT_EQ(part(second, u"sessionDetail"_s)->property("text"), u"pid 1002 · /dev/pts/2"_s);
    expectColor(colorOf(part(second, u"initialTile"_s)), withAlpha(purple, 0.2));
    expectColor(colorOf(part(second, u"initial"_s)), withAlpha(purple, 0.9));
    EXPECT_EQ(part(second, u"initialTile"_s)->size(), QSizeF(36, 36));
    expectColor(colorOf(part(second, u"arrow"_s)), purple);
}

TEST_F(SessionPickerDialog, HasTheLooksOfOpenCode) {
    showOpenCode(2);
    EXPECT_EQ(textOf(u"pickerTitle"_s), u"Select OpenCode Client"_s);
    expectColor(propertyOf(u"sheetGround"_s, "color").value<QColor>(), withAlpha(green, 0.3));
    EXPECT_EQ(part(row(0), u"initial"_s)->property("text"), u"O"_s);
    expectColor(colorOf(part(row(0), u"initialTile"_s)), withAlpha(green, 0.2));
}

TEST_F(SessionPickerDialog, ARowLightsUpUnderThePointer) {
    showWith(2);
    QQuickItem* const ground = part(row(0), u"rowGround"_s);
    QQuickItem* const arrow = part(row(0), u"arrow"_s);
    const double restingX = arrow->mapToScene({0, 0}).x();
    EXPECT_EQ(ground->property("radius").toDouble(), 9);
    expectColor(colorOf(ground), withAlpha(Qt::white, 0.04));
    expectColor(borderColor(ground), withAlpha(Qt::white, 0.08));
    EXPECT_EQ(arrow->opacity(), 0.5);
    hoverAt(middleOf(row(0)));
    advance(64ms);
    EXPECT_GT(arrow->opacity(), 0.7) << "past the half, as it eases out";
    EXPECT_LT(arrow->opacity(), 1);
    advance(80ms);
    expectColor(colorOf(ground), withAlpha(purple, 0.15));
    expectColor(borderColor(ground), withAlpha(purple, 0.4));
    EXPECT_EQ(arrow->opacity(), 1);
    EXPECT_EQ(arrow->mapToScene({0, 0}).x(), restingX + 2);
    leave();
    advance(200ms);
    expectColor(colorOf(ground), withAlpha(Qt::white, 0.04));
    EXPECT_EQ(arrow->mapToScene({0, 0}).x(), restingX);
}

TEST_F(SessionPickerDialog, AClickSendsToTheSession) {
    showWith(3);
    app().setAgentsIncluded(false);
    clickAt(middleOf(row(1)));
    EXPECT_FALSE(app().showSessionPicker());
    scheduler.advance(2s);
    EXPECT_EQ(terminalAutomation.focused, QStringList{u"com.apple.Terminal /dev/pts/2"_s});
    EXPECT_EQ(pasteboard.contents, u"fix it"_s);
}

TEST_F(SessionPickerDialog, AClickClosesItBeforeItSends) {
    showWith(2);
    QStringList order;
    QObject::connect(&app(), &AppState::showSessionPickerChanged,
                     [&] { order.append(u"closed"_s); });
    QObject::connect(&app(), &AppState::draftTextChanged, [&] { order.append(u"sent"_s); });
    clickAt(middleOf(row(0)));
    scheduler.advance(2s);
    EXPECT_EQ(order, QStringList({u"closed"_s, u"sent"_s}));
}

TEST_F(SessionPickerDialog, ADoubleClickSendsOnce) {
    showWith(2);
    const QPoint position = middleOf(row(0));
    clickAt(position);
    clickAt(position);
    scheduler.advance(3s);
    EXPECT_EQ(keyEvents.keystrokes().count(u"Return down"_s), 1);
}

TEST_F(SessionPickerDialog, CloseAndEscapeSendNothing) {
    showWith(2);
    click(u"closeButton"_s);
    EXPECT_FALSE(app().showSessionPicker());
    settle();
    app().sendToClaude();
    scheduler.advance(2s);
    settle();
    EXPECT_TRUE(app().showSessionPicker());
    key(Qt::Key_Escape);
    EXPECT_FALSE(app().showSessionPicker());
    settle();
    EXPECT_EQ(app().draftText(), u"fix it"_s);
    EXPECT_FALSE(pasteboard.contents.has_value());
}

TEST_F(SessionPickerDialog, HasARoundCloseButton) {
    showWith(2);
    EXPECT_EQ(item(u"closeGround"_s)->size(), QSizeF(28, 28));
    EXPECT_EQ(propertyOf(u"closeGround"_s, "radius").toDouble(), 14);
    expectColor(propertyOf(u"closeGround"_s, "color").value<QColor>(), withAlpha(Qt::white, 0.06));
    EXPECT_EQ(propertyOf(u"closeSymbol"_s, "name"), u"xmark"_s);
    EXPECT_EQ(propertyOf(u"closeSymbol"_s, "size").toDouble(), 12);
    EXPECT_EQ(accessible(item(u"closeButton"_s))->text(QAccessible::Name), u"Close"_s);
}

TEST_F(SessionPickerDialog, TheFirstRowHasTheFocusAndTheArrowsMoveIt) {
    showWith(6);
    EXPECT_TRUE(row(0)->hasActiveFocus());
    key(Qt::Key_Down);
    EXPECT_TRUE(row(1)->hasActiveFocus());
    EXPECT_TRUE(part(row(1), u"focusRing"_s)->isVisible());
    for (int i = 0; i < 6; ++i) {
        key(Qt::Key_Down);
        advance(200ms);
    }
    EXPECT_TRUE(row(5)->hasActiveFocus());
    EXPECT_TRUE(frameOf(u"sessionList"_s).contains(row(5)->mapRectToScene(row(5)->boundingRect())));
    key(Qt::Key_Return);
    EXPECT_FALSE(app().showSessionPicker());
    scheduler.advance(2s);
    EXPECT_EQ(terminalAutomation.focused, QStringList{u"com.apple.Terminal /dev/pts/6"_s});
}

TEST_F(SessionPickerDialog, StartsAtTheFirstRowEachTime) {
    showWith(6);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Escape);
    settle();
    app().sendToClaude();
    scheduler.advance(2s);
    settle();
    EXPECT_TRUE(row(0)->hasActiveFocus());
    key(Qt::Key_Down);
    EXPECT_TRUE(row(1)->hasActiveFocus());
}

TEST_F(SessionPickerDialog, TabGoesBetweenTheRowsAndTheCloseButton) {
    showWith(3);
    key(Qt::Key_Tab);
    EXPECT_TRUE(item(u"closeButton"_s)->hasActiveFocus());
    key(Qt::Key_Tab);
    EXPECT_TRUE(row(0)->hasActiveFocus());
}

TEST_F(SessionPickerDialog, CutsALongTitle) {
    showDialog();
    runAgent(u"claude"_s, 1001);
    runAgent(u"claude"_s, 1002);
    processes.workingDirectories[1002] = u"/home/dev/"_s + u"very-long-name-"_s.repeated(10);
    app().setDraftText(u"fix it"_s);
    app().sendToClaude();
    scheduler.advance(2s);
    settle();
    QQuickItem* const title = part(row(1), u"sessionTitle"_s);
    EXPECT_TRUE(title->property("truncated").toBool());
    EXPECT_LE(title->mapToScene({title->width(), 0}).x(),
              part(row(1), u"arrow"_s)->mapToScene({0, 0}).x());
}

TEST_F(SessionPickerDialog, TellsItsRowsToThoseWhoCantSeeThem) {
    showWith(2);
    QAccessibleInterface* const entry = accessible(row(0));
    EXPECT_EQ(entry->role(), QAccessible::ListItem);
    EXPECT_EQ(entry->text(QAccessible::Name), u"project1001"_s);
    EXPECT_EQ(entry->text(QAccessible::Description), u"pid 1001 · /dev/pts/1"_s);
    entry->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(app().showSessionPicker());
}

TEST_F(SessionPickerDialog, ARowKeepsItsSizesAndDistances) {
    showWith(2);
    QQuickItem* const first = row(0);
    const auto frame = [&](const QString& name) {
        QQuickItem* const found = part(first, name);
        return found->mapRectToItem(first, found->boundingRect());
    };
    const auto fontSize = [&](const QString& name) {
        return part(first, name)->property("font").value<QFont>().pixelSize();
    };
    EXPECT_EQ(fontSize(u"initial"_s), 15);
    EXPECT_EQ(fontSize(u"sessionTitle"_s), 14);
    EXPECT_EQ(fontSize(u"sessionDetail"_s), 11);
    EXPECT_EQ(first->height(), 36 + 2 * 9);
    EXPECT_EQ(first->width(), 440 - 2 * 16);
    EXPECT_EQ(frame(u"initialTile"_s), QRectF(14, 9, 36, 36));
    EXPECT_EQ(part(first, u"initialTile"_s)->property("radius").toDouble(), 9);
    EXPECT_EQ(frame(u"sessionTitle"_s).left(), 14 + 36 + 12);
    EXPECT_EQ(frame(u"arrow"_s).right(), first->width() - 14);
    EXPECT_EQ(part(first, u"arrow"_s)->property("name"), u"arrow.right"_s);
    EXPECT_EQ(part(first, u"arrow"_s)->property("size").toDouble(), 13);
    EXPECT_EQ(row(1)->y() - first->y(), 60);
}

TEST_F(SessionPickerDialog, ItsHeadKeepsItsSizesAndDistances) {
    showWith(2);
    const QRectF ground = frameOf(u"sheetGround"_s);
    EXPECT_EQ(propertyOf(u"pickerTitle"_s, "font").value<QFont>().pixelSize(), 16);
    EXPECT_EQ(propertyOf(u"pickerCount"_s, "font").value<QFont>().pixelSize(), 12);
    EXPECT_EQ(frameOf(u"pickerTitle"_s).topLeft() - ground.topLeft(), QPointF(20, 18));
    EXPECT_EQ(frameOf(u"pickerCount"_s).top() - frameOf(u"pickerTitle"_s).bottom(), 3);
    EXPECT_EQ(frameOf(u"pickerDivider"_s).top() - frameOf(u"pickerCount"_s).bottom(), 14);
    EXPECT_EQ(frameOf(u"pickerDivider"_s).width(), 440);
    EXPECT_EQ(ground.right() - frameOf(u"closeGround"_s).right(), 20);
}

TEST_F(SessionPickerDialog, ClosesWithItsWindow) {
    start();
    showMainWindow();
    openPicker(3);
    settle();
    EXPECT_TRUE(isSheetShown());
    close();
    EXPECT_TRUE(app().showSessionPicker()) << "nobody has decided";
}
