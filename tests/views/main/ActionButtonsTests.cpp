#include "HeaderViewTest.h"
#include "theme/HexColor.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class ActionButtons : public HeaderViewTest {
protected:
    void showButtons(int width = 540) {
        start();
        scheduler.runPosted();
        show(u"ActionButtons { width: %1; height: implicitHeight }"_s.arg(width), appState());
    }
    [[nodiscard]] bool isDisabled(const QString& chip) {
        return propertyOf(chip, "disabled").toBool();
    }
    [[nodiscard]] QString hint() { return textOf(u"draftHint"_s); }
};

} // namespace

TEST_F(ActionButtons, AreARow) {
    showButtons();
    EXPECT_EQ(textOf(u"sendToLabel"_s), u"Send to"_s);
    const QFont font = propertyOf(u"sendToLabel"_s, "font").value<QFont>();
    EXPECT_EQ(font.pixelSize(), 12);
    EXPECT_EQ(font.weight(), QFont::Medium);
    EXPECT_EQ(colorOf(u"sendToLabel"_s), hexColor(u"b4b4b4"));
    const QRectF label = frameOf(u"sendToLabel"_s);
    const QRectF claude = frameOf(u"claudeChip"_s);
    const QRectF openCode = frameOf(u"openCodeChip"_s);
    EXPECT_EQ(label.left(), 20);
    EXPECT_NEAR(claude.left(), label.right() + 10, 1);
    EXPECT_EQ(openCode.left(), claude.right() + 10);
    EXPECT_EQ(claude.top(), 12);
    EXPECT_EQ(root()->height(), claude.bottom() + 12);
    EXPECT_EQ(frameOf(u"draftHint"_s).right(), 540 - 20);
}

TEST_F(ActionButtons, WantADraft) {
    showButtons();
    EXPECT_TRUE(isDisabled(u"claudeChip"_s));
    EXPECT_TRUE(isDisabled(u"openCodeChip"_s));
    EXPECT_EQ(hint(), u"record or type first"_s);
    EXPECT_EQ(propertyOf(u"draftHint"_s, "font").value<QFont>().pixelSize(), 11);
    EXPECT_EQ(colorOf(u"draftHint"_s), hexColor(u"666666"));
    EXPECT_DOUBLE_EQ(item(u"draftHint"_s)->opacity(), 0.6);
    app().setDraftText(u"   "_s);
    EXPECT_FALSE(isDisabled(u"claudeChip"_s)) << "blanks are a draft here";
    EXPECT_FALSE(isDisabled(u"openCodeChip"_s));
    EXPECT_EQ(hint(), QString());
    app().setDraftText(QString());
    EXPECT_TRUE(isDisabled(u"claudeChip"_s));
    app().attachImages({QUrl::fromLocalFile(u"/pictures/screen.png"_s)});
    EXPECT_FALSE(isDisabled(u"claudeChip"_s)) << "so is an image";
    EXPECT_FALSE(isDisabled(u"openCodeChip"_s));
    EXPECT_EQ(hint(), QString());
}

TEST_F(ActionButtons, SendToTheirAgents) {
    showButtons();
    app().setDraftText(u"Fix the login."_s);
    click(u"claudeChip"_s);
    scheduler.runPosted();
    EXPECT_TRUE(app().errorMessage().value_or(QString()).contains(u"Claude"_s))
        << "there is no session";
    app().dismissError();
    click(u"openCodeChip"_s);
    scheduler.runPosted();
    EXPECT_TRUE(app().errorMessage().value_or(QString()).contains(u"OpenCode"_s));
}

TEST_F(ActionButtons, AreReachedByTabOnceThereIsADraft) {
    showButtons();
    key(Qt::Key_Tab);
    EXPECT_FALSE(item(u"claudeChip"_s)->hasActiveFocus());
    app().setDraftText(u"Fix the login."_s);
    key(Qt::Key_Tab);
    EXPECT_TRUE(item(u"claudeChip"_s)->hasActiveFocus());
    key(Qt::Key_Tab);
    EXPECT_TRUE(item(u"openCodeChip"_s)->hasActiveFocus());
}

TEST_F(ActionButtons, TellThoseWhoCantSeeWhatTheyWaitFor) {
    showButtons();
    const auto description = [this] {
        return accessible(item(u"claudeChip"_s))->text(QAccessible::Description);
    };
    EXPECT_EQ(description(), u"record or type first"_s);
    app().setDraftText(u"Fix the login."_s);
    EXPECT_EQ(description(), QString());
}

TEST_F(ActionButtons, CutTheHintWhereThereIsNoRoom) {
    showButtons(380);
    EXPECT_TRUE(propertyOf(u"draftHint"_s, "truncated").toBool());
    EXPECT_GE(frameOf(u"draftHint"_s).left(), frameOf(u"openCodeChip"_s).right() + 10);
    EXPECT_LE(frameOf(u"draftHint"_s).right(), 360);
}
