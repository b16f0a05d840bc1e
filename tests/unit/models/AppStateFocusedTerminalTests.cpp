#include "AppStateDeliveryFixture.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

using FocusedTerminal = Delivery;
using SessionRow = Delivery;
using Diagnostic = Delivery;

} // namespace

TEST_F(FocusedTerminal, PastesAndSubmitsInTheApplicationOfTheTake) {
    AppState& app = startWithTarget(workspace.running.front());
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
    AppState& app = startWithTarget(editor);
    ASSERT_EQ(app.lastFocusedAppPID(), 5000);
    bundle.pid = 5000;
    app.setDraftText(u"run"_s);
    app.autoSendToFocusedTerminal();
    settle();
    EXPECT_EQ(workspace.activated, std::vector{terminalPid});
}

TEST_F(FocusedTerminal, ATargetThatHasGoneIsNotActivatedButTheKeysAreStillPosted) {
    AppState& app = startWithTarget(editor);
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

TEST_F(FocusedTerminal, TheEndOfTheProgramLeavesOutWhatIsLeft) {
    start().setDraftText(u"run"_s);
    keyEvents.note(u"send"_s);
    app().compactSendCommand();
    scheduler.advance(200ms);
    endProgram();
    settle();
    EXPECT_EQ(keyEvents.keystrokes(), u"0 send\n100 Cmd+V down\n120 Cmd+V up"_s);
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
    AppState& app = startWithTarget(editor);
    bundle.pid = 5000;
    app.testSendDiagnostic();
    settle();
    EXPECT_TRUE(feed().contains(
        u"Target PID = own PID (5000) — Quorvin was frontmost. Can't self-send."_s));
}

TEST_F(Diagnostic, SaysWhenTheTargetHasGone) {
    AppState& app = startWithTarget(editor);
    app.testSendDiagnostic();
    settle();
    EXPECT_TRUE(feed().contains(u"Target PID: 5000 — 'unknown' [unknown]"_s));
    EXPECT_EQ(feed().last(),
              u"Target PID 5000 is no longer running — reopen terminal and record again"_s);
}

TEST_F(Diagnostic, PostsTheTokenToTheProcessWithoutActivatingIt) {
    AppState& app = startWithTarget(workspace.running.front());
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

TEST_F(Diagnostic, TheEndOfTheProgramLeavesOutWhatIsLeft) {
    startWithTarget(workspace.running.front());
    keyEvents.note(u"start"_s);
    app().testSendDiagnostic();
    scheduler.advance(300ms);
    endProgram();
    settle();
    EXPECT_EQ(keyEvents.keystrokes(), u"0 start\n200 Cmd+V down -> 900\n250 Cmd+V up -> 900"_s);
}
