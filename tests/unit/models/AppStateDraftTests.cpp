#include "AppStateFixture.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

using AppStateDraft = AppStateTest;
using AppStateImages = AppStateTest;

namespace {

QList<QUrl> images(int count) {
    QList<QUrl> urls;
    for (int i = 0; i < count; ++i) {
        urls.append(QUrl::fromLocalFile(u"/tmp/%1.png"_s.arg(i)));
    }
    return urls;
}

} // namespace

TEST_F(AppStateDraft, DeletingTheLastPhraseKeepsTheMarkBeforeIt) {
    AppState& app = start();
    app.setDraftText(u"One. Two! Three"_s);
    app.deleteLastPhrase();
    EXPECT_EQ(app.draftText(), u"One. Two!"_s);
    EXPECT_EQ(app.compactFeedback(), u"← removed"_s);
}

TEST_F(AppStateDraft, DeletingFromADraftWithoutSentencesEmptiesIt) {
    AppState& app = start();
    app.setDraftText(u"Hello"_s);
    app.deleteLastPhrase();
    EXPECT_EQ(app.draftText(), QString());
}

TEST_F(AppStateDraft, DeletingFromAnEmptyDraftGivesNoFeedback) {
    AppState& app = start();
    app.deleteLastPhrase();
    EXPECT_EQ(app.compactFeedback(), QString());
}

TEST_F(AppStateDraft, ADraftThatEndsInASeparatorLosesOnlyItsBlank) {
    AppState& app = start();
    app.setDraftText(u"One? Two. "_s);
    app.deleteLastPhrase();
    EXPECT_EQ(app.draftText(), u"One? Two."_s);
}

TEST_F(AppStateDraft, ALineBreakIsNoSeparator) {
    AppState& app = start();
    app.setDraftText(u"One.\nTwo"_s);
    app.deleteLastPhrase();
    EXPECT_EQ(app.draftText(), QString());
}

TEST_F(AppStateDraft, LoadingFromAnEmptyHistoryGivesNoFeedback) {
    AppState& app = start();
    app.setDraftText(u"kept"_s);
    app.loadPreviousPhrase();
    EXPECT_EQ(app.draftText(), u"kept"_s);
    EXPECT_EQ(app.compactFeedback(), QString());
}

TEST_F(AppStateDraft, LoadingTakesTheOnlyRowAlsoWhenTheDraftEqualsIt) {
    AppState& app = start();
    app.historyService()->add(u"only "_s, u"en"_s, 1, QString());
    app.setDraftText(u" only"_s);
    app.loadPreviousPhrase();
    EXPECT_EQ(app.draftText(), u"only "_s);
    EXPECT_EQ(app.compactFeedback(), u"↑ loaded"_s);
}

TEST_F(AppStateDraft, RepeatedLoadingAlternatesBetweenTheTwoNewestTexts) {
    AppState& app = start();
    for (const QString& text : {u"a"_s, u"b"_s, u"c"_s}) {
        app.historyService()->add(text, u"en"_s, 1, QString());
    }
    app.loadPreviousPhrase();
    const QString newest = app.draftText();
    app.loadPreviousPhrase();
    const QString second = app.draftText();
    EXPECT_NE(newest, second);
    app.loadPreviousPhrase();
    EXPECT_EQ(app.draftText(), newest);
}

TEST_F(AppStateImages, TwentyImagesLeaveEighteenAndTheRestIsDropped) {
    AppState& app = start();
    app.attachImages(images(20));
    EXPECT_EQ(app.attachedImages(), images(18));
    EXPECT_EQ(feed(ActivityType::attach), QStringList{u"18 image(s) attached (18/18 total)"_s});
    app.attachImages(images(1));
    EXPECT_EQ(app.attachedImages().size(), 18);
    EXPECT_EQ(feed(ActivityType::attach).size(), 1);
}

TEST_F(AppStateImages, RemovingDropsEveryEntryOfThatUrlWithoutALogLine) {
    AppState& app = start();
    app.attachImages(images(2) + images(1));
    app.removeImage(images(1).first());
    EXPECT_EQ(app.attachedImages(), images(2).last(1));
    EXPECT_EQ(feed(ActivityType::attach).size(), 1);
}

TEST_F(AppStateImages, ClearingTheImagesKeepsTheText) {
    AppState& app = start();
    app.setDraftText(u"kept"_s);
    app.attachImages(images(3));
    app.clearImages();
    EXPECT_TRUE(app.attachedImages().isEmpty());
    EXPECT_EQ(app.draftText(), u"kept"_s);
}

TEST_F(AppStateImages, FiveMoreToFifteenAddTheFirstThree) {
    AppState& app = start();
    app.attachImages(images(15));
    const QList<QUrl> more = images(20).last(5);
    for (const QUrl& image : more) {
        app.attachImages({image});
    }
    EXPECT_EQ(app.attachedImages(), images(15) + more.first(3));
}

TEST_F(AppStateDraft, ClearingItTakesTextAndImages) {
    AppState& app = start();
    app.setDraftText(u"text"_s);
    app.attachImages(images(2));
    app.clearDraft();
    EXPECT_EQ(app.draftText(), QString());
    EXPECT_TRUE(app.attachedImages().isEmpty());
}

TEST_F(AppStateDraft, CopyingReplacesThePasteboard) {
    AppState& app = start();
    pasteboard.contents = u"old"_s;
    app.copyToPasteboard(u"new\ntext"_s);
    EXPECT_EQ(pasteboard.contents, u"new\ntext"_s);
}

class AppStateSelection : public AppStateTest {
protected:
    void pickUp() {
        app().pickUpSelection();
        scheduler.runPosted();
    }
};

TEST_F(AppStateSelection, BecomesTheEmptyDraftWithoutItsMargins) {
    AppState& app = start();
    textSelections.selection = u" \n two words\t\n"_s;
    pasteboard.contents = u"copied"_s;
    pickUp();
    EXPECT_EQ(app.draftText(), u"two words"_s);
}

TEST_F(AppStateSelection, IsAddedToADraftAfterABlank) {
    AppState& app = start();
    textSelections.selection = u"this"_s;
    app.setDraftText(u"Fix"_s);
    pickUp();
    EXPECT_EQ(app.draftText(), u"Fix this"_s);
    for (const QString& end : {u"Fix "_s, u"Fix\n"_s, u"Fix\u00a0"_s}) {
        app.setDraftText(end);
        pickUp();
        EXPECT_EQ(app.draftText(), end + u"this"_s);
    }
}

TEST_F(AppStateSelection, IsTakenFromThePasteboardWhenNothingIsSelected) {
    AppState& app = start();
    pasteboard.contents = u"copied"_s;
    for (const std::optional<QString>& nothing :
         {std::optional<QString>(), std::optional(QString())}) {
        app.setDraftText(QString());
        textSelections.selection = nothing;
        pickUp();
        EXPECT_EQ(app.draftText(), u"copied"_s);
    }
}

TEST_F(AppStateSelection, OfBlanksAloneChangesNothing) {
    AppState& app = start();
    app.setDraftText(u"kept"_s);
    textSelections.selection = u" \t\n "_s;
    pasteboard.contents = u"copied"_s;
    pickUp();
    EXPECT_EQ(app.draftText(), u"kept"_s);
}

TEST_F(AppStateSelection, WithoutAnyTextChangesNothing) {
    AppState& app = start();
    app.setDraftText(u"kept"_s);
    pasteboard.contents.reset();
    pickUp();
    EXPECT_EQ(app.draftText(), u"kept"_s);
}
