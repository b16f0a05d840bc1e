#include "OnboardingFixture.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

TEST_F(Onboarding, LooksForTheMicrophoneEveryOneAndAHalfSeconds) {
    appear();
    grantMicrophone();
    scheduler.advance(1499ms);
    EXPECT_FALSE(wizard().micGranted());
    scheduler.advance(1ms);
    EXPECT_TRUE(wizard().micGranted());
    EXPECT_TRUE(app().microphoneAuthorized());
    EXPECT_EQ(step(), Step::microphone);
    scheduler.advance(799ms);
    EXPECT_EQ(step(), Step::microphone);
    scheduler.advance(1ms);
    EXPECT_EQ(step(), Step::accessibility);
    EXPECT_EQ(keyEvents.trustRequests, 1) << "now the system may ask";
}

TEST_F(Onboarding, LooksForAccessibilityEverySecond) {
    appearAt(Step::accessibility);
    keyEvents.trusted = true;
    scheduler.advance(999ms);
    EXPECT_FALSE(wizard().accGranted());
    scheduler.advance(1ms);
    EXPECT_TRUE(wizard().accGranted());
    EXPECT_TRUE(app().accessibilityAuthorized());
    EXPECT_TRUE(app().agentService().accessibilityGranted());
    scheduler.advance(799ms);
    EXPECT_EQ(step(), Step::accessibility);
    scheduler.advance(1ms);
    EXPECT_EQ(step(), Step::automation);
}

TEST_F(Onboarding, LooksForAutomationEveryTwoSeconds) {
    appearAt(Step::automation);
    app().setAutomationAuthorized(false);
    terminalAutomation.permission = true;
    scheduler.advance(1999ms);
    EXPECT_FALSE(wizard().autGranted());
    scheduler.advance(1ms);
    EXPECT_TRUE(wizard().autGranted());
    EXPECT_TRUE(app().automationAuthorized());
    scheduler.advance(799ms);
    EXPECT_EQ(step(), Step::automation);
    scheduler.advance(1ms);
    EXPECT_EQ(step(), Step::done);
}

TEST_F(Onboarding, APermissionThatIsThereWhenItsStepBeginsIsTakenWithoutATimer) {
    appear();
    grantMicrophone();
    keyEvents.trusted = true;
    terminalAutomation.permission = true;
    scheduler.advance(1500ms + 800ms);
    EXPECT_EQ(step(), Step::accessibility);
    EXPECT_TRUE(wizard().accGranted());
    EXPECT_EQ(wizard().accPollTicks(), 0);
    scheduler.advance(800ms);
    EXPECT_EQ(step(), Step::automation);
    EXPECT_TRUE(wizard().autGranted());
    scheduler.advance(800ms);
    EXPECT_EQ(step(), Step::done);
}

TEST_F(Onboarding, RunsAtMostOnePoll) {
    start();
    const std::size_t others = [this] {
        scheduler.runPosted();
        return scheduler.sleepers();
    }();
    wizard().checkInitialState();
    scheduler.runPosted();
    EXPECT_EQ(scheduler.sleepers(), others + 1);
    grantMicrophone();
    scheduler.advance(2300ms);
    ASSERT_EQ(step(), Step::accessibility);
    EXPECT_EQ(scheduler.sleepers(), others + 1);
    scheduler.advance(3s);
    EXPECT_EQ(scheduler.sleepers(), others + 1);
    keyEvents.trusted = true;
    scheduler.advance(1800ms);
    ASSERT_EQ(step(), Step::automation);
    EXPECT_EQ(scheduler.sleepers(), others + 1);
    terminalAutomation.permission = true;
    scheduler.advance(2800ms);
    ASSERT_EQ(step(), Step::done);
    EXPECT_EQ(scheduler.sleepers(), others) << "nothing waits at the end";
}

TEST_F(Onboarding, ADelayedAdvanceSkipsNothingWhenItsStepHasGone) {
    appearAt(Step::accessibility);
    keyEvents.trusted = true;
    scheduler.advance(1s);
    ASSERT_TRUE(wizard().accGranted());
    scheduler.advance(400ms);
    wizard().continueWithoutTest();
    EXPECT_EQ(step(), Step::automation);
    scheduler.advance(400ms);
    EXPECT_EQ(step(), Step::automation);
    EXPECT_FALSE(wizard().autGranted());
    terminalAutomation.permission = true;
    scheduler.advance(1600ms);
    EXPECT_TRUE(wizard().autGranted()) << "two seconds after it was reached: the poll went on";
}
