#include "DialogsTest.h"
#include "theme/HexColor.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class ErrorAlert : public DialogsTest {
protected:
    void showAlert(const QString& message) {
        start();
        showOverWindow(u"ErrorAlert { appState: window.appState }"_s);
        app().showError(message);
        settle();
    }
};

const QString needsAccessibility = u"Accessibility permission required"_s;

} // namespace

TEST_F(ErrorAlert, TellsTheErrorAndOffersToDismissIt) {
    showAlert(u"No session found."_s);
    EXPECT_EQ(textOf(u"alertTitle"_s), u"Error"_s);
    EXPECT_EQ(textOf(u"alertMessage"_s), u"No session found."_s);
    EXPECT_EQ(textOf(u"defaultButton"_s), u"OK"_s);
    EXPECT_FALSE(item(u"cancelButton"_s)->isVisible());
    click(u"defaultButton"_s);
    EXPECT_FALSE(app().showError());
    settle();
    EXPECT_FALSE(isSheetShown());
}

TEST_F(ErrorAlert, OffersTheSettingsForAMissingPermission) {
    showAlert(needsAccessibility);
    EXPECT_EQ(textOf(u"defaultButton"_s), u"Open Settings"_s);
    EXPECT_EQ(textOf(u"cancelButton"_s), u"Cancel"_s);
    click(u"defaultButton"_s);
    EXPECT_FALSE(app().showError());
    EXPECT_EQ(workspace.openedURLs.size(), 1U);
    settle();
    app().showError(needsAccessibility);
    settle();
    click(u"cancelButton"_s);
    EXPECT_FALSE(app().showError());
    EXPECT_EQ(workspace.openedURLs.size(), 1U);
}

TEST_F(ErrorAlert, SaysUnknownErrorWithoutAMessage) {
    showAlert(QString());
    EXPECT_EQ(textOf(u"alertMessage"_s), u"Unknown error"_s);
}

TEST_F(ErrorAlert, ReturnPressesTheDefaultButtonAndEscapeCancels) {
    showAlert(needsAccessibility);
    key(Qt::Key_Escape);
    EXPECT_FALSE(app().showError());
    EXPECT_TRUE(workspace.openedURLs.empty());
    settle();
    app().showError(needsAccessibility);
    settle();
    key(Qt::Key_Return);
    EXPECT_FALSE(app().showError());
    EXPECT_EQ(workspace.openedURLs.size(), 1U);
}

TEST_F(ErrorAlert, TheButtonWithTheFocusHasTheReturnKey) {
    showAlert(needsAccessibility);
    key(Qt::Key_Tab);
    EXPECT_TRUE(item(u"cancelButton"_s)->hasActiveFocus());
    EXPECT_TRUE(itemsIn(item(u"cancelButton"_s), u"focusRing"_s).first()->isVisible());
    key(Qt::Key_Return);
    EXPECT_FALSE(app().showError());
    EXPECT_TRUE(workspace.openedURLs.empty());
}

TEST_F(ErrorAlert, KeepsItsTextsWhileItFadesAway) {
    showAlert(needsAccessibility);
    app().dismissError();
    advance(32ms);
    EXPECT_TRUE(isSheetShown());
    EXPECT_EQ(textOf(u"alertMessage"_s), needsAccessibility);
    EXPECT_EQ(textOf(u"defaultButton"_s), u"Open Settings"_s);
    settle();
    app().showError(u"Something else"_s);
    settle();
    EXPECT_EQ(textOf(u"alertMessage"_s), u"Something else"_s);
    EXPECT_EQ(textOf(u"defaultButton"_s), u"OK"_s);
}

TEST_F(ErrorAlert, ANewErrorReplacesTheOneThatShows) {
    showAlert(u"first"_s);
    app().showError(needsAccessibility);
    settle();
    EXPECT_EQ(textOf(u"alertMessage"_s), needsAccessibility);
    EXPECT_TRUE(item(u"cancelButton"_s)->isVisible());
}

TEST_F(ErrorAlert, WrapsAndScrollsALongMessage) {
    const QString text = u"Something went wrong. "_s.repeated(100).left(2000);
    showAlert(text);
    EXPECT_EQ(item(u"alertPage"_s)->height(), 240);
    EXPECT_GT(item(u"alertMessage"_s)->height(), 400);
    EXPECT_LE(item(u"alertMessage"_s)->width(), item(u"alertPage"_s)->width());
    const QRectF window(0, 0, 580, 850);
    EXPECT_TRUE(window.contains(frameOf(u"sheetGround"_s)));
    EXPECT_TRUE(frameOf(u"sheetGround"_s).contains(frameOf(u"defaultButton"_s)));
    key(Qt::Key_Down);
    advance(1s);
    EXPECT_GT(propertyOf(u"alertPage"_s, "contentY").toDouble(), 20);
    key(Qt::Key_Up);
    advance(1s);
    EXPECT_EQ(propertyOf(u"alertPage"_s, "contentY").toDouble(), 0);
}

TEST_F(ErrorAlert, BreaksAWordThatIsLongerThanALine) {
    showAlert(u"/a/path/without/blanks"_s.repeated(20));
    EXPECT_LE(propertyOf(u"alertMessage"_s, "contentWidth").toDouble(),
              item(u"alertPage"_s)->width());
}

TEST_F(ErrorAlert, IsReadToThoseWhoCantSeeIt) {
    showAlert(u"No session found."_s);
    QAccessibleInterface* const message = accessible(item(u"alertMessage"_s));
    EXPECT_EQ(message->role(), QAccessible::AlertMessage);
    EXPECT_EQ(message->text(QAccessible::Name), u"No session found."_s);
    QAccessibleInterface* const button = accessible(item(u"defaultButton"_s));
    EXPECT_EQ(button->text(QAccessible::Name), u"OK"_s);
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(app().showError());
}

TEST_F(ErrorAlert, FollowsTheTheme) {
    theme.setTheme(u"latte"_s);
    showAlert(u"No session found."_s);
    expectColor(propertyOf(u"sheetGround"_s, "fill").value<QColor>(), hexColor(u"e6e9ef"));
    expectColor(propertyOf(u"alertTitle"_s, "color").value<QColor>(), hexColor(u"4c4f69"));
    theme.setTheme(u"forest"_s);
    advance(500ms);
    expectColor(propertyOf(u"sheetGround"_s, "fill").value<QColor>(), hexColor(u"0f1e0f"));
}

TEST_F(ErrorAlert, TakesAnyTextAsItIs) {
    const QString text = u"<b>שגיאה</b> 👩‍👩‍👧‍👦 & more"_s;
    showAlert(text);
    EXPECT_EQ(textOf(u"alertMessage"_s), text);
}
