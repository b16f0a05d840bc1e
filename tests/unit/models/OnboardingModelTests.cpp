#include "OnboardingFixture.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString settingsPage = u"x-apple.systempreferences:com.apple.preference.security?"_s;

} // namespace

// --- Appearing -----------------------------------------------------------------------------------

TEST_F(Onboarding, BeginsAtTheMicrophoneWithNothingGranted) {
    appear();
    EXPECT_EQ(step(), Step::microphone);
    EXPECT_FALSE(wizard().micGranted());
    EXPECT_FALSE(wizard().accGranted());
    EXPECT_FALSE(wizard().autGranted());
    EXPECT_EQ(wizard().accPollTicks(), 0);
    EXPECT_FALSE(wizard().showAccessibilityWarning());
    EXPECT_FALSE(wizard().isMicRequestPending());
}

TEST_F(Onboarding, TellsTheAgentServiceOfTheTrustThatItFinds) {
    keyEvents.trusted = true;
    appear();
    app().agentService().setAccessibilityGranted(false);
    wizard().checkInitialState();
    EXPECT_TRUE(app().agentService().accessibilityGranted());
    EXPECT_TRUE(wizard().accGranted());
    EXPECT_EQ(step(), Step::microphone) << "the microphone is missing";
}

TEST_F(Onboarding, WithTheMicrophoneGrantedBeginsAtAccessibilityWithoutAskingTheUser) {
    grantMicrophone();
    start();
    wizard().checkInitialState();
    EXPECT_EQ(step(), Step::accessibility) << "at once";
    EXPECT_TRUE(wizard().micGranted());
    scheduler.advance(10s);
    EXPECT_EQ(keyEvents.trustRequests, 0);
}

TEST_F(Onboarding, WithBothGrantedGoesToAutomationInATask) {
    grantMicrophone();
    keyEvents.trusted = true;
    start();
    wizard().checkInitialState();
    EXPECT_EQ(step(), Step::microphone);
    scheduler.runPosted();
    EXPECT_EQ(step(), Step::automation);
    EXPECT_EQ(keyEvents.trustRequests, 0);
}

TEST_F(Onboarding, WithAllPermissionsMovesOnToTheEndWithoutAClick) {
    grantMicrophone();
    keyEvents.trusted = true;
    terminalAutomation.permission = true;
    appear();
    EXPECT_EQ(step(), Step::automation);
    EXPECT_TRUE(wizard().autGranted());
    scheduler.advance(799ms);
    EXPECT_EQ(step(), Step::automation);
    scheduler.advance(1ms);
    EXPECT_EQ(step(), Step::done);
    EXPECT_TRUE(app().needsOnboarding()) << "only the user ends it";
}

TEST_F(Onboarding, WithoutAutomationTheAutomationPollDecides) {
    grantMicrophone();
    keyEvents.trusted = true;
    appear();
    scheduler.advance(60s);
    EXPECT_EQ(step(), Step::automation);
    EXPECT_FALSE(wizard().autGranted());
}

// --- Microphone ----------------------------------------------------------------------------------

TEST_F(Onboarding, GrantAccessAsksTheSystemAndThePollAdvances) {
    appear();
    wizard().requestMicPermission();
    EXPECT_TRUE(wizard().isMicRequestPending());
    scheduler.runPosted();
    EXPECT_EQ(audioHost.accessRequests, 1);
    grantMicrophone();
    audioHost.accessAnswer.resolve(true);
    EXPECT_FALSE(wizard().isMicRequestPending());
    EXPECT_TRUE(wizard().micGranted());
    EXPECT_TRUE(app().microphoneAuthorized());
    EXPECT_EQ(step(), Step::microphone);
    scheduler.advance(1500ms + 800ms);
    EXPECT_EQ(step(), Step::accessibility);
}

TEST_F(Onboarding, GrantAccessPressedTwiceAsksOnce) {
    appear();
    wizard().requestMicPermission();
    wizard().requestMicPermission();
    scheduler.runPosted();
    wizard().requestMicPermission();
    scheduler.runPosted();
    EXPECT_EQ(audioHost.accessRequests, 1);
    audioHost.accessAnswer.resolve(false); // else its task would never end
}

TEST_F(Onboarding, ADeniedRequestLeavesTheStepWaitingAndMayBeRepeated) {
    appear();
    wizard().requestMicPermission();
    scheduler.runPosted();
    audioHost.accessAnswer.resolve(false);
    EXPECT_FALSE(wizard().isMicRequestPending());
    EXPECT_FALSE(wizard().micGranted());
    scheduler.advance(60s);
    EXPECT_EQ(step(), Step::microphone);
    audioHost.accessAnswer = {};
    wizard().requestMicPermission();
    scheduler.runPosted();
    EXPECT_EQ(audioHost.accessRequests, 2);
    audioHost.accessAnswer.resolve(false); // else its task would never end
}

TEST_F(Onboarding, GrantAccessAsksNobodyWhenTheAnswerIsKnown) {
    appear();
    for (const auto status : {MicrophoneAuthorization::denied, MicrophoneAuthorization::restricted,
                              MicrophoneAuthorization::authorized}) {
        audioHost.authorization = status;
        wizard().requestMicPermission();
        const bool isGranted = status == MicrophoneAuthorization::authorized;
        EXPECT_EQ(wizard().micGranted(), isGranted);
        EXPECT_EQ(app().microphoneAuthorized(), isGranted);
        EXPECT_FALSE(wizard().isMicRequestPending());
    }
    scheduler.runPosted();
    EXPECT_EQ(audioHost.accessRequests, 0);
}

TEST_F(Onboarding, AnAnswerThatComesAfterTheEndIsKeptAndAfterTheProgramIsDropped) {
    appear();
    wizard().requestMicPermission();
    scheduler.runPosted();
    wizard().completeWizard();
    grantMicrophone();
    audioHost.accessAnswer.resolve(true);
    EXPECT_TRUE(app().microphoneAuthorized());

    audioHost.authorization = MicrophoneAuthorization::notDetermined;
    audioHost.accessAnswer = {};
    appear();
    wizard().requestMicPermission();
    scheduler.runPosted();
    endProgram();
    audioHost.accessAnswer.resolve(true);
}

TEST_F(Onboarding, AMicrophoneThatIsGrantedHereCanBeUsedAtOnce) {
    appear();
    EXPECT_FALSE(app().audioService().permissionGranted());
    grantMicrophone();
    scheduler.advance(1500ms);
    app().startRecording();
    EXPECT_TRUE(app().isRecording());
}

// --- Accessibility -------------------------------------------------------------------------------

TEST_F(Onboarding, WarnsOfAnOldEntryAfterThreeLooks) {
    appearAt(Step::accessibility);
    scheduler.advance(2999ms);
    EXPECT_EQ(wizard().accPollTicks(), 2);
    EXPECT_FALSE(wizard().showAccessibilityWarning());
    scheduler.advance(1ms);
    EXPECT_EQ(wizard().accPollTicks(), 3);
    EXPECT_TRUE(wizard().showAccessibilityWarning());
    scheduler.advance(5s);
    EXPECT_EQ(wizard().accPollTicks(), 8);
    EXPECT_TRUE(wizard().showAccessibilityWarning());
}

TEST_F(Onboarding, TheWarningGoesWithTheGrant) {
    appearAt(Step::accessibility);
    scheduler.advance(4s);
    keyEvents.trusted = true;
    scheduler.advance(1s);
    EXPECT_TRUE(wizard().accGranted());
    EXPECT_FALSE(wizard().showAccessibilityWarning());
    scheduler.advance(800ms);
    EXPECT_EQ(step(), Step::automation);
}

TEST_F(Onboarding, TheUserMayMoveOnWithoutTheGrant) {
    appearAt(Step::accessibility);
    scheduler.advance(4s);
    wizard().continueWithoutTest();
    EXPECT_EQ(step(), Step::automation);
    EXPECT_FALSE(wizard().showAccessibilityWarning());
    EXPECT_EQ(wizard().accPollTicks(), 0);
    EXPECT_FALSE(wizard().accGranted());
    EXPECT_FALSE(app().accessibilityAuthorized());
    terminalAutomation.permission = true;
    scheduler.advance(2s);
    EXPECT_TRUE(wizard().autGranted());
    EXPECT_EQ(wizard().accPollTicks(), 0) << "nobody looks for Accessibility any more";
}

// --- Buttons -------------------------------------------------------------------------------------

TEST_F(Onboarding, OpensTheSettingsPages) {
    appear();
    wizard().openAccessibilitySettings();
    wizard().openAutomationSettings();
    EXPECT_EQ(workspace.openedURLs, (std::vector{settingsPage + u"Privacy_Accessibility"_s,
                                                 settingsPage + u"Privacy_Automation"_s}));
}

TEST_F(Onboarding, HasTheSystemAskForAutomation) {
    appearAt(Step::automation);
    wizard().requestAutomationPermissions();
    EXPECT_EQ(terminalAutomation.permissionRequests, 1);
}

TEST_F(Onboarding, GivesThePlatformsHintForEachPermission) {
    start();
    EXPECT_EQ(wizard().hint(Step::microphone), platform().permissionHints.microphone);
    EXPECT_EQ(wizard().hint(Step::accessibility), platform().permissionHints.accessibility);
    EXPECT_EQ(wizard().hint(Step::automation), platform().permissionHints.automation);
    EXPECT_EQ(wizard().hint(Step::done), QString());
}

// --- Ending --------------------------------------------------------------------------------------

TEST_F(Onboarding, CompletingEndsItForGood) {
    appearAt(Step::microphone);
    wizard().completeWizard();
    EXPECT_TRUE(app().onboardingComplete());
    EXPECT_FALSE(app().needsOnboarding());
    EXPECT_EQ(defaults.boolean(u"onboardingComplete"_s), true);
    EXPECT_FALSE(start().needsOnboarding()) << "at the next start, too";
}

TEST_F(Onboarding, SkippingAStepEndsTheWholeWizardAndLooksForNothingMore) {
    for (const Step skipped : {Step::microphone, Step::accessibility, Step::automation}) {
        audioHost.authorization = MicrophoneAuthorization::denied;
        defaults.setBoolean(u"onboardingComplete"_s, false);
        appearAt(skipped);
        wizard().completeWizard();
        EXPECT_FALSE(app().needsOnboarding());
        grantMicrophone();
        keyEvents.trusted = true;
        terminalAutomation.permission = true;
        scheduler.advance(20s);
        EXPECT_EQ(step(), skipped);
        EXPECT_FALSE(wizard().autGranted());
        terminalAutomation.permission = false;
    }
}

TEST_F(Onboarding, ClosingStopsThePollAndWhatWaits) {
    appearAt(Step::accessibility);
    scheduler.advance(2s);
    wizard().stop();
    scheduler.advance(10s);
    EXPECT_EQ(wizard().accPollTicks(), 2);

    wizard().checkInitialState();
    scheduler.runPosted();
    keyEvents.trusted = true;
    scheduler.advance(1s);
    ASSERT_TRUE(wizard().accGranted());
    wizard().stop();
    scheduler.advance(10s);
    EXPECT_EQ(step(), Step::accessibility);
}

TEST_F(Onboarding, RunAgainItBeginsAtTheBeginning) {
    grantMicrophone();
    keyEvents.trusted = true;
    terminalAutomation.permission = true;
    appear();
    scheduler.advance(800ms);
    ASSERT_EQ(step(), Step::done);
    wizard().completeWizard();

    audioHost.authorization = MicrophoneAuthorization::denied;
    keyEvents.trusted = false;
    app().resetOnboarding();
    EXPECT_TRUE(app().needsOnboarding());
    EXPECT_FALSE(app().onboardingComplete());
    wizard().checkInitialState();
    EXPECT_EQ(step(), Step::microphone);
    EXPECT_FALSE(wizard().micGranted());
    EXPECT_FALSE(wizard().accGranted());
    EXPECT_FALSE(wizard().autGranted());
    scheduler.advance(60s);
    EXPECT_EQ(step(), Step::microphone);
}

TEST_F(Onboarding, TheEndOfTheProgramInAnyStepHarmsNothing) {
    for (const Step last : {Step::microphone, Step::accessibility, Step::automation}) {
        audioHost.authorization = MicrophoneAuthorization::denied;
        appearAt(last);
        endProgram();
        scheduler.advance(30s); // the longest sleep
        EXPECT_EQ(scheduler.sleepers(), 0U);
    }
}
