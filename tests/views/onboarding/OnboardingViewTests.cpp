#include "OnboardingViewTest.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

using Onboarding = OnboardingViewTest;

} // namespace

TEST_F(Onboarding, OnlyOneStepShows) {
    for (const Step shown : {Step::microphone, Step::accessibility, Step::automation, Step::done}) {
        showWizardAt(shown);
        for (const QString& name :
             {u"microphonePage"_s, u"accessibilityPage"_s, u"automationPage"_s, u"donePage"_s}) {
            EXPECT_EQ(item(name)->isVisible(), name == pageName()) << name.toStdString();
        }
    }
}

TEST_F(Onboarding, GrantAccessGoesWithTheGrantAndNothingElseMoves) {
    showWizardAt(Step::microphone);
    const QRectF status = frameOf(onPage(u"status"_s));
    audioHost.authorization = MicrophoneAuthorization::authorized;
    advance(1500ms + 400ms);
    ASSERT_EQ(step(), Step::microphone);
    EXPECT_FALSE(onPage(u"grantButton"_s)->isEnabled());
    EXPECT_EQ(onPage(u"grantButton"_s)->opacity(), 0);
    EXPECT_EQ(frameOf(onPage(u"status"_s)).y(), status.y());
    clickOnPage(u"grantButton"_s);
    EXPECT_FALSE(wizard().isMicRequestPending());
}

TEST_F(Onboarding, AHintTellsWhatToDoHereWhileAStepWaits) {
    const PermissionHints& hints = platform().permissionHints;
    const QList<QPair<Step, QString>> rows{{Step::microphone, hints.microphone},
                                           {Step::accessibility, hints.accessibility},
                                           {Step::automation, hints.automation}};
    for (const auto& [wanted, hint] : rows) {
        showWizardAt(wanted);
        EXPECT_EQ(textOnPage(u"hint"_s), hint);
        EXPECT_EQ(onPage(u"hint"_s)->opacity(), 1);
    }
    terminalAutomation.permission = true;
    advance(2s + settled);
    EXPECT_EQ(onPage(u"hint"_s)->opacity(), 0);
    showWizardAt(Step::done);
    EXPECT_FALSE(onPage(u"hint"_s)->isVisible());
}

TEST_F(Onboarding, OneStepFadesIntoTheNextInAFifthOfASecond) {
    showWizardAt(Step::accessibility);
    wizard().continueWithoutTest();
    advance(16ms); // the frame that starts it
    advance(48ms);
    const double early = item(u"automationPage"_s)->opacity();
    EXPECT_GT(early, 0);
    EXPECT_LT(early, 0.25) << "it eases in";
    EXPECT_NEAR(item(u"accessibilityPage"_s)->opacity(), 1 - early, 1e-6);
    advance(144ms);
    EXPECT_EQ(item(u"automationPage"_s)->opacity(), 1);
    EXPECT_FALSE(item(u"accessibilityPage"_s)->isVisible());
}

TEST_F(Onboarding, TheStepThatItBeginsAtIsThereAtOnce) {
    audioHost.authorization = MicrophoneAuthorization::authorized;
    start();
    show(u"OnboardingView { width: 580; height: 850 }"_s, appState());
    EXPECT_EQ(item(u"accessibilityPage"_s)->opacity(), 1);
    EXPECT_FALSE(item(u"microphonePage"_s)->isVisible());
}

TEST_F(Onboarding, TheBadgeStandsStillFromStepToStep) {
    showWizardAt(Step::microphone);
    const QRectF place = frameOf(onPage(u"badge"_s));
    for (const Step shown : {Step::accessibility, Step::automation, Step::done}) {
        showWizardAt(shown);
        EXPECT_EQ(frameOf(onPage(u"badge"_s)), place);
    }
}

TEST_F(Onboarding, EverythingFitsAtEverySize) {
    for (const QSize size : {QSize(580, 850), QSize(1000, 1000), QSize(580, 700)}) {
        for (const Step shown :
             {Step::microphone, Step::accessibility, Step::automation, Step::done}) {
            showWizardAt(shown, size);
            advance(4s);
            ASSERT_EQ(step(), shown);
            const QRectF area(QPointF(0, 0), size);
            QList<QQuickItem*> stack{onPage(u"badge"_s), onPage(u"title"_s),
                                     onPage(u"description"_s), onPage(u"buttons"_s)};
            if (shown != Step::done) {
                stack << onPage(u"status"_s) << onPage(u"hint"_s);
            }
            if (shown == Step::accessibility) {
                stack << item(u"warningBox"_s) << item(u"continueButton"_s);
            }
            if (shown != Step::done) {
                stack << onPage(u"skipButton"_s);
            }
            double bottom = frameOf(item(u"stepIndicator"_s)).bottom();
            for (QQuickItem* part : stack) {
                const QRectF frame = frameOf(part);
                EXPECT_GE(frame.top(), bottom) << part->objectName().toStdString();
                EXPECT_TRUE(area.contains(frame)) << part->objectName().toStdString();
                bottom = frame.bottom();
            }
        }
    }
}

TEST_F(Onboarding, InALowWindowTheFocusScrollsItIntoView) {
    showWizardAt(Step::accessibility, {580, 420});
    advance(4s);
    key(Qt::Key_Backtab);
    ASSERT_TRUE(onPage(u"skipButton"_s)->hasActiveFocus());
    EXPECT_TRUE(QRectF(0, 0, 580, 420).contains(frameOf(onPage(u"skipButton"_s))));
    key(Qt::Key_Tab);
    EXPECT_TRUE(QRectF(0, 0, 580, 420).contains(frameOf(onPage(u"accessibilitySettingsButton"_s))));
}

TEST_F(Onboarding, AnIdleStepSpinsOnlyWhereItWaits) {
    showWizardAt(Step::microphone);
    const auto runningSpinners = [this] {
        int running = 0;
        for (QQuickItem* spinner : items(u"waitingSpinner"_s)) {
            running +=
                spinner->findChild<QObject*>(u"spinnerTimer"_s)->property("running").toBool();
        }
        return running;
    };
    EXPECT_EQ(runningSpinners(), 1);
    window().hide();
    EXPECT_EQ(runningSpinners(), 0);
    showWizardAt(Step::done);
    EXPECT_EQ(runningSpinners(), 0);
}

TEST_F(Onboarding, GrantAccessAsksOnceHoweverOftenItIsClicked) {
    showWizardAt(Step::microphone);
    clickOnPage(u"grantButton"_s);
    clickOnPage(u"grantButton"_s);
    advance(100ms);
    EXPECT_EQ(audioHost.accessRequests, 1);
    audioHost.accessAnswer.resolve(true);
    advance(100ms);
    EXPECT_TRUE(app().audioService().permissionGranted());
}

TEST_F(Onboarding, TheButtonsOfTheOtherStepsDoWhatTheySay) {
    showWizardAt(Step::accessibility);
    clickOnPage(u"accessibilitySettingsButton"_s);
    EXPECT_EQ(workspace.openedURLs.size(), 1U);
    EXPECT_TRUE(workspace.openedURLs.back().endsWith(u"Privacy_Accessibility"));
    advance(3s + settled);
    clickOnPage(u"continueButton"_s);
    ASSERT_EQ(step(), Step::automation);
    advance(settled);
    clickOnPage(u"allowButton"_s);
    EXPECT_EQ(terminalAutomation.permissionRequests, 1);
    clickOnPage(u"automationSettingsButton"_s);
    EXPECT_TRUE(workspace.openedURLs.back().endsWith(u"Privacy_Automation"));
    terminalAutomation.permission = true;
    advance(4s);
    ASSERT_EQ(step(), Step::done);
    EXPECT_TRUE(app().needsOnboarding());
    clickOnPage(u"getStartedButton"_s);
    EXPECT_FALSE(app().needsOnboarding());
    EXPECT_TRUE(app().onboardingComplete());
}

TEST_F(Onboarding, SkipForNowEndsTheWizardFromEachStep) {
    for (const Step skipped : {Step::microphone, Step::accessibility, Step::automation}) {
        defaults.setBoolean(u"onboardingComplete"_s, false);
        showWizardAt(skipped);
        ASSERT_EQ(step(), skipped);
        EXPECT_EQ(textOnPage(u"skipButton"_s), u"Skip for now"_s);
        clickOnPage(u"skipButton"_s);
        EXPECT_FALSE(app().needsOnboarding());
        EXPECT_EQ(step(), skipped);
    }
}

TEST_F(Onboarding, ReturnPressesTheFirstButtonOfEachStep) {
    showWizardAt(Step::accessibility);
    key(Qt::Key_Return);
    EXPECT_EQ(workspace.openedURLs.size(), 1U);
    keyEvents.trusted = true;
    advance(1s + 800ms + settled);
    ASSERT_EQ(step(), Step::automation);
    key(Qt::Key_Space);
    EXPECT_EQ(terminalAutomation.permissionRequests, 1);
    terminalAutomation.permission = true;
    advance(2s + 800ms + settled);
    ASSERT_EQ(step(), Step::done);
    key(Qt::Key_Enter);
    EXPECT_FALSE(app().needsOnboarding());
}

TEST_F(Onboarding, TabGoesThroughTheButtonsOfTheStepAlone) {
    showWizardAt(Step::automation);
    for (const QString& name : {u"automationSettingsButton"_s, u"skipButton"_s, u"allowButton"_s}) {
        key(Qt::Key_Tab);
        QQuickItem* const button = onPage(name);
        EXPECT_TRUE(button->hasActiveFocus()) << name.toStdString();
        EXPECT_TRUE(button->findChild<QQuickItem*>(u"focusRing"_s)->isVisible());
    }
    terminalAutomation.permission = true;
    advance(2s + 800ms + settled);
    EXPECT_TRUE(onPage(u"getStartedButton"_s)->property("visualFocus").toBool())
        << "who uses the keys still sees where they go";
}

TEST_F(Onboarding, IsReadAndOperatedByAssistants) {
    showWizardAt(Step::automation);
    QAccessibleInterface* const button = accessible(onPage(u"allowButton"_s));
    EXPECT_EQ(button->role(), QAccessible::Button);
    EXPECT_EQ(button->text(QAccessible::Name), u"Allow Prompts"_s);
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(terminalAutomation.permissionRequests, 1);
    EXPECT_EQ(accessible(onPage(u"title"_s))->text(QAccessible::Name), u"Automation Access"_s);
    EXPECT_EQ(accessible(onPage(u"statusText"_s))->text(QAccessible::Name),
              u"Waiting for permission..."_s);
    pressByAssistant(onPage(u"skipButton"_s));
    EXPECT_FALSE(app().needsOnboarding());
}
