#include "AppStateFixture.h"
#include "support/OtherProgram.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Amounts and jumps of time that no day brings.
class Reliability : public AppStateTest {
protected:
    void moveWallClock(std::chrono::seconds by) {
        scheduler.setWallTime(scheduler.wallTime().addSecs(by.count()));
    }

    [[nodiscard]] QString newestText() const { return history().constFirst().text; }
};

} // namespace

TEST_F(Reliability, ADictationOfTenThousandCharactersStaysWhole) {
    const QString text = u"word "_s.repeated(2000).trimmed() + u"."_s;
    ASSERT_EQ(text.size(), 10'000);
    start();
    dictate(text);
    EXPECT_EQ(app().draftText(), text);
    EXPECT_EQ(newestText(), text);
    for (const QString& message : feed()) {
        EXPECT_LT(message.size(), 100) << "the feed shows a beginning only";
    }
}

TEST_F(Reliability, OfFiftySessionsThePickedOneIsTold) {
    for (ProcessID pid = 1000; pid < 1050; ++pid) {
        runAgent(u"claude"_s, pid);
    }
    defaults.setBoolean(u"agentsIncluded"_s, false);
    start();
    app().setDraftText(u"fix it"_s);
    app().sendToClaude();
    scheduler.advance(2s);
    ASSERT_TRUE(app().showSessionPicker());
    const auto sessions = app().sessionPickerSessions();
    ASSERT_EQ(sessions.size(), 50);

    app().sendToPickedSession(sessions.at(49));
    scheduler.advance(2s);

    EXPECT_EQ(terminalAutomation.focused, QStringList{u"com.apple.Terminal /dev/pts/49"_s});
    EXPECT_EQ(pasteboard.contents, u"fix it"_s);
    EXPECT_EQ(feed().last(), u"Sent to Claude successfully"_s);
}

// The history goes by the wall clock: of a full one, the rows from before count as the newer ones.
TEST_F(Reliability, AClockThatIsSetBackCostsNoDraft) {
    start();
    for (int i = 0; i < 20; ++i) {
        dictate(u"before"_s);
    }
    OtherProgram(historyPath()).moveTimes("+1 hour"); // to a clock set back
    moveWallClock(-1h);
    for (const auto& text : {u"after"_s, u"and again"_s}) {
        app().setDraftText(QString());
        dictate(text);
        EXPECT_EQ(app().draftText(), text);
        EXPECT_EQ(app().state(), AppState::AppMode::ready);
        EXPECT_EQ(history().size(), 20);
    }
    for (const HistoryEntry& entry : history()) {
        EXPECT_EQ(entry.text, u"before");
    }
}

TEST_F(Reliability, AClockThatIsSetBackDuringATakeLeavesItsLengthAlone) {
    start();
    engineSays(u"a take"_s);
    app().startRecording();
    speak();
    moveWallClock(-1h);
    speak();
    app().stopRecording();
    scheduler.runPosted();
    EXPECT_EQ(app().draftText(), u"a take"_s);
    EXPECT_NEAR(history().constFirst().duration, 2.0, 0.1);
}

TEST_F(Reliability, ATakeGoesOnAfterTheMachineSlept) {
    start();
    engineSays(u"a take"_s);
    app().startRecording();
    speak();
    // The wall clock went on and the monotonic one did not, as on Linux.
    moveWallClock(8h);
    speak();
    app().stopRecording();
    scheduler.runPosted();
    EXPECT_EQ(app().draftText(), u"a take"_s);
    EXPECT_NEAR(history().constFirst().duration, 2.0, 0.1);
}

TEST_F(Reliability, ATakeCanBeginAfterBothClocksWentOn) {
    start();
    dictate(u"in the evening"_s);
    scheduler.advance(12h);
    app().setDraftText(QString());
    dictate(u"in the morning"_s);
    EXPECT_EQ(app().draftText(), u"in the morning"_s);
    EXPECT_EQ(history().size(), 2);
    EXPECT_EQ(app().state(), AppState::AppMode::ready);
}
