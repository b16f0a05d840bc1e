#pragma once

#include "views/support/ViewTest.h"

namespace quorvin::testing {

/// The wizard on a machine that grants what a test says; at first it grants nothing.
class OnboardingViewTest : public ViewTest {
protected:
    using Step = OnboardingModel::OnboardingStep;

    OnboardingViewTest() {
        audioHost.authorization = MicrophoneAuthorization::notDetermined;
        keyEvents.trusted = false;
        terminalAutomation.permission = false;
    }

    void showWizard(QSize size = {580, 850}) {
        close(); // the one before looks at the program
        start();
        scheduler.runPosted();
        show(QStringLiteral("OnboardingView { width: %1; height: %2 }")
                 .arg(size.width())
                 .arg(size.height()),
             appState());
        advance(settled);
    }
    /// Shows it at this step, whose permission is missing.
    void showWizardAt(Step step, QSize size = {580, 850}) {
        audioHost.authorization = step > Step::microphone ? MicrophoneAuthorization::authorized
                                                          : MicrophoneAuthorization::notDetermined;
        keyEvents.trusted = step > Step::accessibility;
        terminalAutomation.permission = step > Step::automation;
        showWizard(size);
        if (step == Step::done) {
            advance(std::chrono::seconds(2));
        }
    }
    OnboardingModel& wizard() { return *app().onboarding(); }
    [[nodiscard]] Step step() { return wizard().currentStep(); }

    [[nodiscard]] QString pageName() {
        switch (step()) {
        case Step::microphone:
            return QStringLiteral("microphonePage");
        case Step::accessibility:
            return QStringLiteral("accessibilityPage");
        case Step::automation:
            return QStringLiteral("automationPage");
        case Step::done:
            break;
        }
        return QStringLiteral("donePage");
    }
    /// That item of the page that shows.
    [[nodiscard]] QQuickItem* onPage(const QString& objectName) {
        return itemIn(item(pageName()), objectName);
    }
    [[nodiscard]] QString textOnPage(const QString& objectName) {
        return onPage(objectName)->property("text").toString();
    }
    void clickOnPage(const QString& objectName) { clickAt(middleOf(onPage(objectName))); }

    /// Until one step has faded into the next.
    static constexpr std::chrono::milliseconds settled{250};
};

} // namespace quorvin::testing
