#include "AppStateFixture.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString terminalID = u"com.apple.Terminal"_s;
constexpr ProcessID terminalPid = 900;
constexpr ProcessID shellPid = 910;

const QString orchestratorText =
    u"[ORCHESTRATOR CONTEXT] You are Claude Opus — the ORCHESTRATOR. You have subagents (Claude "
    u"Sonnet 4.6+) that do ALL execution work. NEVER write code yourself. Delegate to CoderAgent, "
    u"BuildAgent, TestEngineer, etc. Read → Plan → Delegate → Review. Save Opus tokens.\n"_s;

/// A desktop with one terminal, in which agents can be started.
class Delivery : public AppStateTest {
protected:
    Delivery() {
        workspace.running = {{terminalPid, u"Terminal"_s, terminalID}};
        processes.parents = {{shellPid, terminalPid}, {terminalPid, 1}};
    }

    /// With the start-up's own lines in the feed already.
    AppState& start() {
        AppState& app = AppStateTest::start();
        scheduler.runPosted();
        return app;
    }

    void runAgent(const QString& name, ProcessID pid) {
        const QString tty = u"pts/%1"_s.arg(pid);
        processes.rows.push_back({pid, name, tty});
        processes.parents[pid] = shellPid;
        processes.holders[u"/dev/"_s + tty] = {shellPid, pid};
        processes.workingDirectories[pid] = u"/home/dev/project%1"_s.arg(pid);
    }

    /// Long enough for any delivery.
    void settle() { scheduler.advance(2s); }

    /// The messages that came after this call's moment.
    [[nodiscard]] QStringList feedSince(qsizetype mark) const { return feed().mid(mark); }

    [[nodiscard]] static QUrl image(const QString& path) { return QUrl::fromLocalFile(path); }
};

using FocusedTerminal = Delivery;
using SessionRow = Delivery;
using Diagnostic = Delivery;

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
    EXPECT_EQ(terminalAutomation.focused, QStringList{terminalID + u" /dev/pts/1001"_s});
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
    EXPECT_EQ(terminalAutomation.focused, QStringList{terminalID + u" /dev/pts/1002"_s});
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

TEST_F(FocusedTerminal, PastesAndSubmitsInTheApplicationOfTheTake) {
    workspace.frontmost = workspace.running.front();
    AppState& app = start();
    app.startRecording();
    app.cancelRecording();
    app.setDraftText(u"run the tests"_s);
    keyEvents.note(u"send"_s);
    app.compactSendCommand();
    settle();
    EXPECT_EQ(keyEvents.keystrokes(), u"0 send\n"
                                      u"100 Cmd+V down\n"
                                      u"120 Cmd+V up\n"
                                      u"280 Return down\n"
                                      u"300 Return up"_s);
    EXPECT_EQ(workspace.activated, std::vector{terminalPid});
    EXPECT_EQ(pasteboard.contents, u"run the tests"_s);
    EXPECT_EQ(app.draftText(), QString());
    EXPECT_TRUE(feed().contains(u"Sending to Terminal (pid=900)"_s));
    EXPECT_EQ(feed().last(), u"Auto-sent to Terminal (pid=900)"_s);
}

TEST_F(FocusedTerminal, ShowsThatItSent) {
    AppState& app = start();
    app.setDraftText(u"run"_s);
    app.compactSendCommand();
    scheduler.advance(300ms);
    EXPECT_EQ(app.compactFeedback(), u"✓ sent"_s);
}

TEST_F(FocusedTerminal, ImagesFollowTheTextAndPathsWithBlanksAreQuoted) {
    AppState& app = start();
    app.setDraftText(u"look"_s);
    app.attachImages({image(u"/tmp/a b.png"_s), image(u"/tmp/c.png"_s)});
    app.autoSendToFocusedTerminal();
    settle();
    EXPECT_EQ(pasteboard.contents,
              u"look\n\n### Images Attached:\n\"/tmp/a b.png\"\n/tmp/c.png\n"_s);
    EXPECT_TRUE(app.attachedImages().isEmpty());
}

TEST_F(FocusedTerminal, WithoutATargetTheFirstTerminalOfTheTableServes) {
    workspace.running = {{7, u"kitty"_s, u"net.kovidgoyal.kitty"_s}, {8, std::nullopt, terminalID}};
    AppState& app = start();
    app.setDraftText(u"run"_s);
    app.autoSendToFocusedTerminal();
    settle();
    EXPECT_TRUE(feed().contains(u"Auto-send: no PID captured, falling back to terminal pid=8"_s));
    EXPECT_TRUE(feed().contains(u"Sending to unknown (pid=8)"_s));
    EXPECT_EQ(workspace.activated, std::vector<ProcessID>{8});
}

TEST_F(FocusedTerminal, ATargetThatIsThisProgramCountsAsNone) {
    AppState& app = start();
    workspace.frontmost = {5000, u"Editor"_s, std::nullopt};
    app.startRecording();
    app.cancelRecording();
    ASSERT_EQ(app.lastFocusedAppPID(), 5000);
    bundle.pid = 5000;
    app.setDraftText(u"run"_s);
    app.autoSendToFocusedTerminal();
    settle();
    EXPECT_EQ(workspace.activated, std::vector{terminalPid});
}

TEST_F(FocusedTerminal, ATargetThatHasGoneIsNotActivatedButTheKeysAreStillPosted) {
    AppState& app = start();
    workspace.frontmost = {5000, u"Editor"_s, std::nullopt};
    app.startRecording();
    app.cancelRecording();
    app.setDraftText(u"run"_s);
    keyEvents.note(u"send"_s);
    app.autoSendToFocusedTerminal();
    settle();
    EXPECT_TRUE(workspace.activated.empty());
    EXPECT_TRUE(keyEvents.keystrokes().startsWith(u"0 send\n0 Cmd+V down"_s));
    EXPECT_TRUE(feed().contains(u"Sending to unknown (pid=5000)"_s));
}

TEST_F(FocusedTerminal, WithoutAnyTerminalTheDraftStays) {
    workspace.running.clear();
    AppState& app = start();
    app.setDraftText(u"run"_s);
    app.autoSendToFocusedTerminal();
    settle();
    EXPECT_EQ(feed().last(), u"Auto-send skipped: no terminal running"_s);
    EXPECT_EQ(app.draftText(), u"run"_s);
    EXPECT_FALSE(pasteboard.contents.has_value());
}

TEST_F(FocusedTerminal, TheSendKeySaysWhenThereIsNothingToSend) {
    AppState& app = start();
    app.compactSendCommand();
    EXPECT_EQ(app.compactFeedback(), u"nothing to send"_s);
    app.autoSendToFocusedTerminal();
    settle();
    EXPECT_FALSE(pasteboard.contents.has_value());
}

TEST_F(FocusedTerminal, WithoutAccessibilityTheUserIsSentToTheSettings) {
    keyEvents.trusted = false;
    AppState& app = start();
    app.setDraftText(u"run"_s);
    const qsizetype mark = feed().size();
    app.compactSendCommand();
    EXPECT_EQ(app.compactFeedback(), u"⚠ Accessibility — re-grant!"_s);
    EXPECT_EQ(app.draftText(), u"run"_s);
    EXPECT_TRUE(feedSince(mark).isEmpty());
    ASSERT_FALSE(notifications.requests.empty());
    EXPECT_EQ(notifications.requests.back().title, u"Accessibility Required"_s);
    EXPECT_EQ(notifications.requests.back().body,
              u"Open System Settings → Privacy → Accessibility, remove Quorvin and add it back."_s);
    EXPECT_EQ(workspace.openedURLs,
              std::vector{u"x-apple.systempreferences:com.apple.preference.security?"
                          u"Privacy_Accessibility"_s});
    scheduler.advance(3999ms);
    EXPECT_NE(app.compactFeedback(), QString());
    scheduler.advance(1ms);
    EXPECT_EQ(app.compactFeedback(), QString());

    app.autoSendToFocusedTerminal();
    EXPECT_EQ(feed().last(), u"Accessibility permission required — opening System Settings"_s);
    EXPECT_FALSE(app.agentService().accessibilityGranted());
}

TEST_F(SessionRow, WithoutSuchARowNothingHappens) {
    AppState& app = start();
    app.setDraftText(u"run"_s);
    app.sendToCompactSession(0);
    app.sendToCompactSession(-1);
    settle();
    EXPECT_EQ(app.draftText(), u"run"_s);
    EXPECT_FALSE(pasteboard.contents.has_value());
}

TEST_F(Diagnostic, StopsWithoutAccessibilityAndLeavesThePasteboardAlone) {
    keyEvents.trusted = false;
    pasteboard.contents = u"mine"_s;
    AppState& app = start();
    const qsizetype mark = feed().size();
    app.testSendDiagnostic();
    settle();
    EXPECT_EQ(feedSince(mark),
              (QStringList{u"=== Send Diagnostic ==="_s,
                           u"Accessibility: DENIED ✗ — grant in System Settings → Privacy → "
                           u"Accessibility"_s}));
    EXPECT_EQ(pasteboard.contents, u"mine"_s);
}

TEST_F(Diagnostic, NeedsATarget) {
    AppState& app = start();
    app.testSendDiagnostic();
    settle();
    EXPECT_EQ(feed().last(),
              u"Target PID: nil — was a terminal frontmost when recording started?"_s);
}

TEST_F(Diagnostic, RefusesItself) {
    AppState& app = start();
    workspace.frontmost = {5000, u"Editor"_s, std::nullopt};
    app.startRecording();
    bundle.pid = 5000;
    app.testSendDiagnostic();
    settle();
    EXPECT_TRUE(feed().contains(
        u"Target PID = own PID (5000) — Quorvin was frontmost. Can't self-send."_s));
}

TEST_F(Diagnostic, SaysWhenTheTargetHasGone) {
    AppState& app = start();
    workspace.frontmost = {5000, u"Editor"_s, std::nullopt};
    app.startRecording();
    app.cancelRecording();
    app.testSendDiagnostic();
    settle();
    EXPECT_TRUE(feed().contains(u"Target PID: 5000 — 'unknown' [unknown]"_s));
    EXPECT_EQ(feed().last(),
              u"Target PID 5000 is no longer running — reopen terminal and record again"_s);
}

TEST_F(Diagnostic, PostsTheTokenToTheProcessWithoutActivatingIt) {
    workspace.frontmost = workspace.running.front();
    AppState& app = start();
    app.startRecording();
    app.cancelRecording();
    app.setDraftText(u"untouched"_s);
    const qsizetype mark = feed().size();
    keyEvents.note(u"start"_s);
    app.testSendDiagnostic();
    settle();
    EXPECT_EQ(keyEvents.keystrokes(), u"0 start\n"
                                      u"200 Cmd+V down -> 900\n"
                                      u"250 Cmd+V up -> 900\n"
                                      u"750 Return down -> 900\n"
                                      u"800 Return up -> 900"_s);
    EXPECT_TRUE(workspace.activated.empty());
    EXPECT_EQ(pasteboard.contents, u"TEST_QUORVIN"_s);
    EXPECT_EQ(app.draftText(), u"untouched"_s);
    EXPECT_EQ(feedSince(mark),
              (QStringList{u"=== Send Diagnostic ==="_s, u"Accessibility: GRANTED ✓"_s,
                           u"Target PID: 900 — 'Terminal' [com.apple.Terminal]"_s,
                           u"Sending TEST_QUORVIN to Terminal (pid=900)..."_s,
                           u"Diagnostic sent. Check 'Terminal' — 'TEST_QUORVIN' should have "
                           u"appeared and been submitted."_s}));
}
