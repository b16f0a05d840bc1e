#include "AppStateDeliveryFixture.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString orchestratorText =
    u"[ORCHESTRATOR CONTEXT] You are Claude Opus — the ORCHESTRATOR. You have subagents (Claude "
    u"Sonnet 4.6+) that do ALL execution work. NEVER write code yourself. Delegate to CoderAgent, "
    u"BuildAgent, TestEngineer, etc. Read → Plan → Delegate → Review. Save Opus tokens.\n"_s;

} // namespace

TEST(OrchestratorText, HasItsLength) {
    EXPECT_EQ(orchestratorText.toUtf8().size(), 272);
}

TEST_F(Delivery, AnEmptyDraftWithoutImagesDoesNothing) {
    runAgent(u"claude"_s, 1001);
    AppState& app = start();
    app.sendToClaude();
    settle();
    EXPECT_FALSE(app.agentService().lastScanTime().has_value());
    EXPECT_FALSE(app.showError());
}

TEST_F(Delivery, OneSessionGetsTheOrchestratorTextAndTheDraft) {
    runAgent(u"claude"_s, 1001);
    AppState& app = start();
    app.setDraftText(u"fix it"_s);
    app.sendToClaude();
    settle();
    EXPECT_EQ(pasteboard.contents, orchestratorText + u"fix it"_s);
    EXPECT_EQ(app.draftText(), QString());
    EXPECT_EQ(terminalAutomation.focused, QStringList{terminalID + u" /dev/pts/1"_s});
    EXPECT_EQ(keyEvents.keystrokes().count(u"Cmd+V down"_s), 1);
    EXPECT_EQ(keyEvents.keystrokes().count(u"Return down"_s), 1);
    EXPECT_TRUE(feed().contains(u"Sending to Claude... (fix it)"_s));
    EXPECT_EQ(feed().last(), u"Sent to Claude successfully"_s);
    EXPECT_EQ(banners().last(), u"Sent to Claude"_s);
}

TEST_F(Delivery, WithoutTheAgentsSettingTheDraftGoesAlone) {
    runAgent(u"claude"_s, 1001);
    defaults.setBoolean(u"agentsIncluded"_s, false);
    AppState& app = start();
    app.setDraftText(u"fix it"_s);
    app.sendToClaude();
    settle();
    EXPECT_EQ(pasteboard.contents, u"fix it"_s);
}

TEST_F(Delivery, ImagesAloneGetNoOrchestratorText) {
    runAgent(u"claude"_s, 1001);
    AppState& app = start();
    app.attachImages({image(u"/tmp/a b.png"_s)});
    app.sendToClaude();
    settle();
    EXPECT_FALSE(pasteboard.contents->contains(u"ORCHESTRATOR"_s));
    EXPECT_TRUE(pasteboard.contents->endsWith(u"### Images Attached:\n\"/tmp/a b.png\"\n"_s));
    EXPECT_TRUE(feed().contains(u"Sending to Claude... ()"_s));
    EXPECT_TRUE(feed().contains(u"1 image(s) attached"_s));
    EXPECT_TRUE(app.attachedImages().isEmpty());
}

TEST_F(Delivery, TheLogShowsFortyCharactersOfTheText) {
    runAgent(u"opencode"_s, 1001);
    AppState& app = start();
    app.setDraftText(QString(41, u'x'));
    app.sendToOpenCode();
    settle();
    EXPECT_TRUE(feed().contains(u"Sending to OpenCode... ("_s + QString(40, u'x') + u"...)"_s));
    app.setDraftText(QString(40, u'y'));
    app.sendToOpenCode();
    settle();
    EXPECT_TRUE(feed().contains(u"Sending to OpenCode... ("_s + QString(40, u'y') + u")"_s));
}

TEST_F(Delivery, WithoutASessionTheUserIsToldAndTheDraftStays) {
    AppState& app = start();
    app.setDraftText(u"fix it"_s);
    app.sendToClaude();
    settle();
    EXPECT_EQ(app.errorMessage(),
              u"No Claude Code session found. Start Claude Code in a terminal first."_s);
    EXPECT_EQ(app.draftText(), u"fix it"_s);
    app.sendToOpenCode();
    settle();
    EXPECT_EQ(app.errorMessage(),
              u"No OpenCode session found. Start OpenCode in a terminal first."_s);
}

TEST_F(Delivery, TwoSessionsOpenThePickerWithTheDraftUnchanged) {
    runAgent(u"claude"_s, 1001);
    runAgent(u"claude"_s, 1002);
    AppState& app = start();
    app.setDraftText(u"fix it"_s);
    app.sendToClaude();
    settle();
    EXPECT_TRUE(app.showSessionPicker());
    EXPECT_EQ(app.sessionPickerTitle(), u"Claude"_s);
    ASSERT_EQ(app.sessionPickerSessions().size(), 2);
    EXPECT_EQ(app.draftText(), u"fix it"_s);
    EXPECT_FALSE(pasteboard.contents.has_value());

    app.setDraftText(QString());
    app.sendToPickedSession(app.sessionPickerSessions().last());
    EXPECT_FALSE(app.showSessionPicker());
    settle();
    EXPECT_EQ(pasteboard.contents, orchestratorText + u"fix it"_s);
    EXPECT_EQ(terminalAutomation.focused, QStringList{terminalID + u" /dev/pts/2"_s});
}

TEST_F(Delivery, AFailedDeliveryLosesTheDraftAndIsReported) {
    runAgent(u"claude"_s, 1001);
    keyEvents.trusted = false;
    AppState& app = start();
    app.setDraftText(u"lost"_s);
    app.sendToClaude();
    settle();
    const QString description = u"Accessibility permission required. Please grant access in System "
                                u"Settings → Privacy & Security → Accessibility."_s;
    EXPECT_EQ(app.draftText(), QString());
    EXPECT_EQ(app.errorMessage(), description);
    EXPECT_TRUE(app.isAccessibilityError());
    EXPECT_EQ(feed().last(), u"Send failed: "_s + description);
    EXPECT_EQ(banners().last(), u"Send Failed"_s);
    EXPECT_EQ(soundsPlayed().last(), u"ui-pop"_s);
    EXPECT_EQ(popVolume(), 0.3);
    EXPECT_FALSE(pasteboard.contents.has_value());
    EXPECT_EQ(keyEvents.keystrokes(), QString());
}

TEST_F(Delivery, TheHistoryRowGetsTheAgentsNameAndHoldsTheTextAlone) {
    runAgent(u"claude"_s, 1001);
    AppState& app = start();
    dictate(u"fix it"_s);
    app.sendToClaude();
    settle();
    ASSERT_EQ(history().size(), 1);
    EXPECT_EQ(history().first().text, u"fix it"_s);
    EXPECT_EQ(history().first().sentTo, u"Claude"_s);
    EXPECT_EQ(history().first().duration, 0.0);
}

TEST_F(Delivery, AnEditedDraftLeavesTheHistoryAlone) {
    runAgent(u"claude"_s, 1001);
    AppState& app = start();
    dictate(u"fix it"_s);
    app.setDraftText(u"fix it now"_s);
    app.sendToClaude();
    settle();
    ASSERT_EQ(history().size(), 1);
    EXPECT_EQ(history().first().sentTo, QString());
}

TEST_F(Delivery, TheEndOfTheProgramLeavesOutWhatIsLeft) {
    runAgent(u"claude"_s, 1001);
    start().setDraftText(u"fix it"_s);
    keyEvents.note(u"send"_s);
    app().sendToClaude();
    scheduler.advance(230ms);
    endProgram();
    settle();
    EXPECT_EQ(keyEvents.keystrokes(), u"0 send\n220 Cmd+V down"_s);
}
