#include "OnboardingViewTest.h"

#include <QScreen>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class OnboardingWindow : public OnboardingViewTest {
protected:
    void showWindow() {
        start();
        scheduler.runPosted();
        show(u"MainWindow {}"_s, appState());
        advance(settled);
    }
    bool hasWizard() { return !items(u"stepIndicator"_s).isEmpty(); }
    bool hasMainView() { return !items(u"micLevelRing"_s).isEmpty(); }
};

} // namespace

TEST_F(OnboardingWindow, AFirstStartShowsTheWizardAndItsEndTheMainView) {
    showWindow();
    EXPECT_TRUE(hasWizard());
    EXPECT_FALSE(hasMainView());
    EXPECT_EQ(window().minimumSize(),
              QSize(580, 850).boundedTo(window().screen()->availableVirtualSize()));
    clickOnPage(u"skipButton"_s);
    advance(16ms);
    EXPECT_FALSE(hasWizard());
    EXPECT_TRUE(hasMainView());
}

TEST_F(OnboardingWindow, WhoHasFinishedItNeverSeesIt) {
    defaults.setBoolean(u"onboardingComplete"_s, true);
    start();
    show(u"MainWindow {}"_s, appState());
    EXPECT_FALSE(hasWizard()) << "not for a single frame";
    EXPECT_TRUE(hasMainView());
}

TEST_F(OnboardingWindow, ResettingBringsItBackAtItsBeginning) {
    audioHost.authorization = MicrophoneAuthorization::authorized;
    keyEvents.trusted = true;
    terminalAutomation.permission = true;
    showWindow();
    advance(2s);
    ASSERT_EQ(step(), Step::done);
    clickOnPage(u"getStartedButton"_s);
    ASSERT_TRUE(hasMainView());
    audioHost.authorization = MicrophoneAuthorization::denied;
    app().resetOnboarding();
    EXPECT_EQ(item(u"microphonePage"_s)->opacity(), 1) << "the last run's end is not seen";
    EXPECT_FALSE(item(u"donePage"_s)->isVisible());
    advance(settled);
    EXPECT_TRUE(hasWizard());
    EXPECT_FALSE(hasMainView());
    EXPECT_EQ(step(), Step::microphone);
    audioHost.authorization = MicrophoneAuthorization::authorized;
    advance(1500ms);
    EXPECT_TRUE(wizard().micGranted()) << "it looks for the permission again";
}

TEST_F(OnboardingWindow, EndingAndResettingInOneGoLeavesItLooking) {
    showWindow();
    wizard().completeWizard();
    app().resetOnboarding();
    audioHost.authorization = MicrophoneAuthorization::authorized;
    advance(1500ms);
    EXPECT_TRUE(wizard().micGranted());
}

TEST_F(OnboardingWindow, AHiddenWindowLooksForNothingAndBeginsAnewWhenItShows) {
    audioHost.authorization = MicrophoneAuthorization::authorized;
    showWindow();
    ASSERT_EQ(step(), Step::accessibility);
    advance(4s);
    ASSERT_TRUE(wizard().showAccessibilityWarning());
    window().hide();
    const int ticks = wizard().accPollTicks();
    advance(10s);
    EXPECT_EQ(wizard().accPollTicks(), ticks);
    window().show();
    advance(16ms);
    EXPECT_EQ(step(), Step::accessibility);
    EXPECT_FALSE(wizard().showAccessibilityWarning());
    advance(1s);
    EXPECT_EQ(wizard().accPollTicks(), 1);
}

TEST_F(OnboardingWindow, NoTakeIsStartedByKeyWhileItCannotBeSeen) {
    audioHost.authorization = MicrophoneAuthorization::authorized;
    showWindow();
    key(Qt::Key_R, Qt::ControlModifier);
    EXPECT_FALSE(app().isRecording());
    clickOnPage(u"skipButton"_s);
    advance(16ms);
    key(Qt::Key_R, Qt::ControlModifier);
    EXPECT_TRUE(app().isRecording());
}
