#include "services/agents/KeystrokeInjector.h"
#include "unit/services/agents/DeliveryFixture.h"

#include <memory>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class KeystrokeInjectorTest : public DeliveryTest {
protected:
    void pasteAndSubmit(std::optional<ProcessID> toPID, bool settleTab) {
        const auto run = [this, toPID, settleTab]() -> Task<> {
            co_await KeystrokeInjector::pasteAndSubmit(scheduler, workspace, keyEvents,
                                                       sender.get(), toPID, settleTab);
            keyEvents.note(u"done"_s);
        };
        run();
        scheduler.advance(1s);
    }

    std::unique_ptr<QObject> sender = std::make_unique<QObject>();
};

} // namespace

TEST_F(KeystrokeInjectorTest, TheWholeSequenceKeepsItsTimesToTheMillisecond) {
    runTerminal(60);
    pasteAndSubmit(60, true);
    EXPECT_EQ(keyEvents.keystrokes(), u"120 activate 60\n"
                                      "220 Cmd+V down\n"
                                      "240 Cmd+V up\n"
                                      "400 Return down\n"
                                      "420 Return up\n"
                                      "420 done"_s);
}

TEST_F(KeystrokeInjectorTest, WithoutSettlingOnlyTheFirstWaitIsLeftOut) {
    runTerminal(60);
    pasteAndSubmit(60, false);
    EXPECT_EQ(keyEvents.keystrokes(), u"0 activate 60\n"
                                      "100 Cmd+V down\n"
                                      "120 Cmd+V up\n"
                                      "280 Return down\n"
                                      "300 Return up\n"
                                      "300 done"_s);
}

TEST_F(KeystrokeInjectorTest, WithoutAProcessNothingIsActivatedAndTheRestIsTheSame) {
    pasteAndSubmit(std::nullopt, true);
    EXPECT_EQ(keyEvents.keystrokes(), u"120 Cmd+V down\n"
                                      "140 Cmd+V up\n"
                                      "300 Return down\n"
                                      "320 Return up\n"
                                      "320 done"_s);
}

TEST_F(KeystrokeInjectorTest, AProcessThatRunsNoMoreIsNotActivated) {
    runTerminal(61);
    pasteAndSubmit(60, false);
    EXPECT_EQ(keyEvents.keystrokes(), u"0 Cmd+V down\n"
                                      "20 Cmd+V up\n"
                                      "180 Return down\n"
                                      "200 Return up\n"
                                      "200 done"_s);
}

TEST_F(KeystrokeInjectorTest, AnActivationWithoutEffectIsNotNoticed) {
    runTerminal(60);
    workspace.activateAnswer = Workspace::Request::notPossibleHere;
    pasteAndSubmit(60, false);
    EXPECT_EQ(keyEvents.keystrokes(), u"0 activate 60\n"
                                      "100 Cmd+V down\n"
                                      "120 Cmd+V up\n"
                                      "280 Return down\n"
                                      "300 Return up\n"
                                      "300 done"_s);
}

TEST_F(KeystrokeInjectorTest, EventsThatCannotBePostedAreLeftOutAndTheWaitsStay) {
    keyEvents.answer = KeyEvents::Result::notPossibleHere;
    pasteAndSubmit(std::nullopt, true);
    EXPECT_EQ(keyEvents.keystrokes(), u"320 done"_s);
}

TEST_F(KeystrokeInjectorTest, WithItsSenderGoneTheRestIsLeftOut) {
    runTerminal(60);
    scheduler.postDelayed(130ms, [this] { sender.reset(); });
    pasteAndSubmit(60, false);
    EXPECT_EQ(keyEvents.keystrokes(), u"0 activate 60\n"
                                      "100 Cmd+V down\n"
                                      "120 Cmd+V up\n"
                                      "280 done"_s);
}

TEST_F(KeystrokeInjectorTest, WithItsSenderGoneNoKeyIsTouchedAnyMore) {
    scheduler.postDelayed(10ms, [this] { sender.reset(); });
    pasteAndSubmit(std::nullopt, false);
    EXPECT_EQ(keyEvents.keystrokes(), u"0 Cmd+V down\n"
                                      "180 done"_s);
}

TEST_F(KeystrokeInjectorTest, AHeldModifierDelaysWhatFollowsAndNoWaitIsShortened) {
    keyEvents.delay = 30ms;
    pasteAndSubmit(std::nullopt, false);
    EXPECT_EQ(keyEvents.keystrokes(), u"30 Cmd+V down\n"
                                      "50 Cmd+V up\n"
                                      "240 Return down\n"
                                      "260 Return up\n"
                                      "260 done"_s);
}
