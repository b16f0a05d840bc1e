#include "DraftViewTest.h"
#include "theme/HexColor.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QQuickTextDocument>
#include <QSignalSpy>
#include <QTextDocument>
#include <QWheelEvent>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString hebrew = u"\u05e9\u05dc\u05d5\u05dd"_s;

class DraftEditor : public DraftViewTest {
protected:
    int cursor() { return editor()->property("cursorPosition").toInt(); }
    double scrolled() { return propertyOf(u"draftScroller"_s, "contentY").toDouble(); }
    /// Of a character of the text, in the editor.
    QRectF placeOf(int position) {
        QRectF place;
        QMetaObject::invokeMethod(editor(), "positionToRectangle", Q_RETURN_ARG(QRectF, place),
                                  Q_ARG(int, position));
        return place;
    }
    bool isAtLeft(int position) { return placeOf(position).left() < 20; }
    /// Of a draft with a paragraph to the right, one to the left, and the same again.
    void expectMixedDirections() {
        EXPECT_TRUE(isAtLeft(0));
        EXPECT_GT(placeOf(5).left(), 480);
        EXPECT_TRUE(isAtLeft(10));
        EXPECT_GT(placeOf(19).left(), 480);
    }
    /// The typing of a test may be several steps.
    void undoTo(const QString& draft) {
        for (int step = 0; step < 10 && app().draftText() != draft; ++step) {
            key(Qt::Key_Z, Qt::ControlModifier);
        }
        EXPECT_EQ(app().draftText(), draft);
    }
    static QString lines(int count) { return QString(u"line\n"_s).repeated(count) + u"end"_s; }
};

} // namespace

TEST_F(DraftEditor, ShowsTheDraftAndTakesWhatIsTyped) {
    showEditor();
    app().setDraftText(u"Fix the login."_s);
    EXPECT_EQ(shownText(), u"Fix the login."_s);
    type(u" Now."_s);
    EXPECT_EQ(app().draftText(), u"Fix the login. Now."_s);
    key(Qt::Key_Return);
    EXPECT_EQ(app().draftText(), u"Fix the login. Now.\n"_s);
}

TEST_F(DraftEditor, KeepsTheCursorWhereTheUserTypes) {
    showEditor();
    app().setDraftText(u"one three"_s);
    editor()->setProperty("cursorPosition", 4);
    type(u"two "_s);
    EXPECT_EQ(app().draftText(), u"one two three"_s);
    EXPECT_EQ(cursor(), 8);
}

TEST_F(DraftEditor, PutsTheCursorBehindATextFromElsewhere) {
    showEditor();
    type(u"abc"_s);
    key(Qt::Key_Home);
    app().setDraftText(u"Fix the login."_s);
    EXPECT_EQ(cursor(), 14);
    app().setDraftText(u"Fix the login. And the logout."_s);
    EXPECT_EQ(cursor(), 30);
    app().clearDraft();
    EXPECT_EQ(shownText(), QString());
}

TEST_F(DraftEditor, UndoesAndRedoes) {
    showEditor();
    type(u"abc"_s);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(app().draftText(), QString());
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(app().draftText(), u"abc"_s);
}

TEST_F(DraftEditor, BringsBackWhatATextFromElsewhereHasReplaced) {
    showEditor();
    type(u"my own words"_s);
    app().setDraftText(u"A new take."_s);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(app().draftText(), u"my own words"_s);
    EXPECT_EQ(shownText(), u"my own words"_s);
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(app().draftText(), u"A new take."_s);
    app().clearDraft();
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(app().draftText(), u"A new take."_s);
}

TEST_F(DraftEditor, AddsATakeToTheTextThatIsThere) {
    showEditor();
    app().setDraftText(u"One. "_s);
    type(u"Two."_s);
    const auto* const document = editor()->property("textDocument").value<QQuickTextDocument*>();
    const QSignalSpy changes(document->textDocument(), &QTextDocument::contentsChange);
    const QString before = app().draftText();
    app().setDraftText(before + u"\nThree."_s);
    EXPECT_EQ(shownText(), u"One. Two.\nThree."_s);
    ASSERT_FALSE(changes.isEmpty());
    for (const auto& change : changes) {
        EXPECT_GE(change.first().toInt(), before.size()) << "touches the text before it";
    }
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(app().draftText(), before) << "what was typed is another step";
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(app().draftText(), u"One. Two.\nThree."_s);
}

TEST_F(DraftEditor, DoesNotUndoTheDraftThatItBeganWith) {
    start();
    app().setDraftText(u"kept"_s);
    show(u"Item { required property QtObject appState; width: 580; height: 600;"
         "DraftPanel { appState: parent.appState; width: 540 } }"_s,
         appState());
    setEditorFocus();
    EXPECT_EQ(shownText(), u"kept"_s);
    EXPECT_EQ(cursor(), 4);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(app().draftText(), u"kept"_s);
}

TEST_F(DraftEditor, LeavesTheDraftAloneUntilTheUserEdits) {
    showEditor();
    const QString draft = u"10\u00a0px\u202fwide\r\nand \u2028more\u2029"_s;
    int changes = 0;
    QObject::connect(&app(), &AppState::draftTextChanged, [&] { ++changes; });
    app().setDraftText(draft);
    EXPECT_EQ(app().draftText(), draft);
    EXPECT_EQ(changes, 1);
    type(u"!"_s);
    EXPECT_EQ(app().draftText(), u"10\u00a0px\u202fwide\nand \nmore\n!"_s)
        << "blanks that don't break lines stay";
}

TEST_F(DraftEditor, WritesNothingBackWhenOnlyItsLooksChange) {
    showEditor();
    const QString draft = u"12\r\n34"_s;
    app().setDraftText(draft);
    QFont larger = editor()->property("font").value<QFont>();
    larger.setPixelSize(20);
    editor()->setProperty("font", larger);
    theme.setTheme(u"latte"_s);
    advance(500ms);
    EXPECT_EQ(app().draftText(), draft);
}

TEST_F(DraftEditor, LetsGoOfADraftThatIsSentWhileTheUserIsInIt) {
    showEditor();
    app().attachImages(pictures(1));
    type(u"Fix the login."_s);
    key(Qt::Key_A, Qt::ControlModifier);
    app().clearDraft();
    EXPECT_EQ(app().draftText(), QString());
    EXPECT_EQ(shownText(), QString());
    EXPECT_EQ(selection(), QString());
    EXPECT_EQ(textOf(u"draftCharsCounter"_s), u"0 chars"_s);
    advance(1s);
    EXPECT_EQ(app().draftText(), QString()) << "nothing comes back later";
    type(u"Next."_s);
    EXPECT_EQ(app().draftText(), u"Next."_s);
}

// On X11 a text control that selects something takes the primary selection, which a delivery needs.
TEST_F(DraftEditor, LeavesSelectionAndClipboardToTheUser) {
    showEditor();
    QClipboard& clipboard = *QGuiApplication::clipboard();
    clipboard.setText(u"theirs"_s);
    const QSignalSpy selected(editor(), SIGNAL(selectedTextChanged()));
    const QSignalSpy copied(&clipboard, &QClipboard::changed);
    type(u"my own words"_s);
    app().setDraftText(u"A new take."_s);
    app().setDraftText(u"A new take. And more."_s);
    app().clearDraft();
    key(Qt::Key_Z, Qt::ControlModifier);
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    key(Qt::Key_Tab);
    key(Qt::Key_Backtab);
    EXPECT_EQ(selected.count(), 0);
    EXPECT_EQ(copied.count(), 0);
    EXPECT_EQ(clipboard.text(), u"theirs"_s);
}

TEST_F(DraftEditor, TakesALongDraftAndWhatIsTypedIntoIt) {
    showEditor();
    const QString draft = QString(u"0123456 👩‍👩‍👧 "_s).repeated(1000);
    app().setDraftText(draft);
    EXPECT_EQ(textOf(u"draftCharsCounter"_s), u"10000 chars"_s);
    type(u"x"_s);
    EXPECT_EQ(app().draftText(), draft + u'x');
    key(Qt::Key_Backspace);
    key(Qt::Key_Backspace);
    key(Qt::Key_Left);
    editor()->setProperty("cursorPosition", 0);
    type(u"y"_s);
    EXPECT_EQ(app().draftText(), u'y' + draft.chopped(1));
}

TEST_F(DraftEditor, HasTheUsualKeys) {
    showEditor();
    QGuiApplication::clipboard()->clear();
    type(u"one two"_s);
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selection(), u"one two"_s);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"one two"_s);
    key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(app().draftText(), QString());
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(app().draftText(), u"one two"_s);
    key(Qt::Key_Home);
    EXPECT_EQ(cursor(), 0);
    key(Qt::Key_End);
    EXPECT_EQ(cursor(), 7);
    key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(cursor(), 4);
    key(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(selection(), u"two"_s);
    key(Qt::Key_Delete);
    EXPECT_EQ(app().draftText(), u"one "_s);
}

TEST_F(DraftEditor, IsLeftByTab) {
    showEditor();
    key(Qt::Key_Tab);
    EXPECT_TRUE(item(u"imageDropZone"_s)->hasActiveFocus());
    key(Qt::Key_Backtab);
    EXPECT_TRUE(editor()->hasActiveFocus());
    key(Qt::Key_Backtab);
    EXPECT_TRUE(item(u"historyButton"_s)->hasActiveFocus());
    EXPECT_EQ(app().draftText(), QString());
}

TEST_F(DraftEditor, IsBetween80And150High) {
    showEditor();
    QQuickItem* const ground = item(u"draftEditor"_s);
    (void)grab();
    EXPECT_EQ(ground->height(), 80);
    app().setDraftText(lines(4));
    (void)grab();
    EXPECT_GT(ground->height(), 80);
    EXPECT_LT(ground->height(), 150);
    EXPECT_EQ(ground->height(), editor()->implicitHeight());
    app().setDraftText(lines(40));
    (void)grab();
    EXPECT_EQ(ground->height(), 150);
    EXPECT_EQ(ground->property("radius"), 8);
    EXPECT_EQ(frameOf(ground).left() - frameOf(item(u"panel"_s)).left(), 12);
    EXPECT_EQ(frameOf(item(u"panel"_s)).right() - frameOf(ground).right(), 12);
    expectColor(colorOf(u"draftEditor"_s), hexColor(u"0a0a0a"));
}

TEST_F(DraftEditor, KeepsTheCursorInViewAndTurnsWithTheWheel) {
    showEditor();
    EXPECT_FALSE(item(u"draftScrollBar"_s)->isVisible());
    app().setDraftText(lines(40));
    (void)grab();
    EXPECT_TRUE(item(u"draftScrollBar"_s)->isVisible());
    const double end = editor()->height() - 150;
    EXPECT_NEAR(scrolled(), end, 8);
    key(Qt::Key_Home, Qt::ControlModifier);
    (void)grab();
    EXPECT_LE(scrolled(), placeOf(0).top());
    const QPoint middle = middleOf(u"draftScroller"_s);
    QWheelEvent down(middle, middle, QPoint(0, -60), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&window(), &down);
    advance(500ms);
    EXPECT_GT(scrolled(), 30);
    type(u"x"_s);
    (void)grab();
    EXPECT_LE(scrolled(), placeOf(0).top()) << "back to where the user types";
}

TEST_F(DraftEditor, WrapsLongLines) {
    showEditor();
    app().setDraftText(QString(u"word "_s).repeated(40) + QString(300, u'x'));
    EXPECT_GT(editor()->property("lineCount").toInt(), 3);
    EXPECT_LE(editor()->property("contentWidth").toDouble(), 516);
}

TEST_F(DraftEditor, AlignsEachParagraphByItsOwnDirection) {
    showEditor();
    const QString mixed = u"left\n"_s + hebrew + u"\n12 right\n(\u0627\u0644"_s;
    app().setDraftText(mixed);
    expectMixedDirections();
    app().setDraftText(u"left again"_s);
    EXPECT_TRUE(isAtLeft(0));
    app().setDraftText(QString());
    type(hebrew);
    EXPECT_FALSE(isAtLeft(0));
    key(Qt::Key_Return);
    type(u"left"_s);
    EXPECT_FALSE(isAtLeft(0));
    EXPECT_TRUE(isAtLeft(6));
    undoTo(u"left again"_s);
    EXPECT_TRUE(isAtLeft(0));
    undoTo(mixed);
    expectMixedDirections();
    undoTo(QString());
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(app().draftText(), mixed);
    expectMixedDirections();
}

TEST_F(DraftEditor, HasDigitsOfOneWidth) {
    showEditor();
    app().setDraftText(u"a111\na000"_s);
    EXPECT_NEAR(placeOf(4).left(), placeOf(9).left(), 0.01);
}

TEST_F(DraftEditor, IsQuietWhileItIsEmpty) {
    showEditor();
    EXPECT_EQ(propertyOf(u"draftText"_s, "placeholderText"), u"Speak or type…"_s);
    EXPECT_FALSE(propertyOf(u"draftText"_s, "background").value<QQuickItem*>());
}

TEST_F(DraftEditor, HasTheColoursOfTheTheme) {
    showEditor();
    EXPECT_EQ(propertyOf(u"draftText"_s, "font").value<QFont>().pixelSize(), 13);
    expectColor(colorOf(u"draftText"_s), hexColor(u"ffffff"));
    expectColor(propertyOf(u"draftText"_s, "selectionColor").value<QColor>(), hexColor(u"3b82f6"));
    theme.setTheme(u"latte"_s);
    advance(500ms);
    expectColor(colorOf(u"draftText"_s), hexColor(u"4c4f69"));
    expectColor(propertyOf(u"draftText"_s, "selectionColor").value<QColor>(), hexColor(u"1e66f5"));
    expectColor(propertyOf(u"draftText"_s, "selectedTextColor").value<QColor>(),
                hexColor(u"eff1f5"));
}

TEST_F(DraftEditor, ShowsThatTheKeysGoThere) {
    showPanel();
    EXPECT_FALSE(item(u"draftFocus"_s)->isVisible());
    click(u"draftText"_s);
    EXPECT_TRUE(editor()->hasActiveFocus());
    EXPECT_TRUE(item(u"draftFocus"_s)->isVisible());
}

TEST_F(DraftEditor, HasANameAndARole) {
    showEditor();
    EXPECT_EQ(accessible(editor())->text(QAccessible::Name), u"Draft"_s);
    EXPECT_EQ(accessible(editor())->role(), QAccessible::EditableText);
}

TEST_F(DraftEditor, CountsWhatAReaderSees) {
    showPanel();
    EXPECT_EQ(textOf(u"draftCharsCounter"_s), u"0 chars"_s);
    app().setDraftText(u"e\u0301👩‍👩‍👧 1"_s);
    EXPECT_EQ(textOf(u"draftCharsCounter"_s), u"4 chars"_s);
    setEditorFocus();
    type(u"x"_s);
    EXPECT_EQ(textOf(u"draftCharsCounter"_s), u"5 chars"_s);
    app().setDraftText(QString(10'000, u'x'));
    EXPECT_EQ(textOf(u"draftCharsCounter"_s), u"10000 chars"_s);
}
