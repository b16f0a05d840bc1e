#include "DraftViewTest.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

using DraftMenu = DraftViewTest;

} // namespace

TEST_F(DraftMenu, IsAboutWhatIsSelected) {
    showEditor();
    app().setDraftText(u"one two"_s);
    key(Qt::Key_A, Qt::ControlModifier);
    QTest::mouseClick(&window(), Qt::RightButton, {}, middleOf(u"draftText"_s));
    advance(300ms);
    EXPECT_EQ(selection(), u"one two"_s);
    click(u"cutItem"_s);
    advance(300ms);
    EXPECT_EQ(app().draftText(), u""_s);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"one two"_s);
}

TEST_F(DraftMenu, OpensAtThePointerWhoeverHasTheFocus) {
    showPanel();
    app().setDraftText(u"one two"_s);
    item(u"copyButton"_s)->forceActiveFocus();
    const QPoint pointer = middleOf(u"draftText"_s);
    QTest::mouseClick(&window(), Qt::RightButton, {}, pointer);
    advance(300ms);
    const QPointF corner = frameOf(item(u"undoItem"_s)).topLeft() - QPointF(4, 4);
    EXPECT_LE((corner - pointer).manhattanLength(), 2) << "it hangs on the pointer";
    click(u"selectAllItem"_s);
    advance(300ms);
    EXPECT_TRUE(editor()->hasActiveFocus());
    EXPECT_EQ(selection(), u"one two"_s);
}

TEST_F(DraftMenu, DoesAllByTheKeyboard) {
    showEditor();
    QGuiApplication::clipboard()->clear();
    const auto choose = [this](const QString& name) {
        key(Qt::Key_Menu);
        advance(300ms);
        EXPECT_TRUE(propertyOf(name, "enabled").toBool()) << name.toStdString();
        // From the first that can be chosen.
        for (int step = 0; step < 8 && !propertyOf(name, "highlighted").toBool(); ++step) {
            key(Qt::Key_Down);
        }
        key(Qt::Key_Return);
        advance(300ms);
        EXPECT_TRUE(editor()->hasActiveFocus());
    };
    type(u"one two"_s);
    choose(u"selectAllItem"_s);
    EXPECT_EQ(selection(), u"one two"_s);
    choose(u"copyItem"_s);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"one two"_s);
    choose(u"cutItem"_s);
    EXPECT_EQ(app().draftText(), QString());
    choose(u"pasteItem"_s);
    EXPECT_EQ(app().draftText(), u"one two"_s);
    choose(u"undoItem"_s);
    EXPECT_EQ(app().draftText(), QString());
    choose(u"redoItem"_s);
    EXPECT_EQ(app().draftText(), u"one two"_s);
}

TEST_F(DraftMenu, OffersOnlyWhatCanBeDone) {
    showEditor();
    QGuiApplication::clipboard()->clear();
    key(Qt::Key_Menu);
    advance(300ms);
    for (const QString& name : {u"undoItem"_s, u"redoItem"_s, u"cutItem"_s, u"copyItem"_s,
                                u"pasteItem"_s, u"selectAllItem"_s}) {
        EXPECT_FALSE(propertyOf(name, "enabled").toBool()) << name.toStdString();
    }
}
