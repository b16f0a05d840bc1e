#pragma once

#include "AppStateFixture.h"

namespace quorvin::testing {

/// The wizard without its view, on a machine that grants nothing at first.
class Onboarding : public AppStateTest {
protected:
    using Step = OnboardingModel::OnboardingStep;

    Onboarding() {
        audioHost.authorization = MicrophoneAuthorization::notDetermined;
        keyEvents.trusted = false;
        terminalAutomation.permission = false;
    }

    /// The program starts and the wizard appears.
    void appear() {
        start();
        scheduler.runPosted();
        wizard().checkInitialState();
        scheduler.runPosted();
    }
    OnboardingModel& wizard() { return *app().onboarding(); }
    [[nodiscard]] Step step() { return wizard().currentStep(); }
    void grantMicrophone() { audioHost.authorization = MicrophoneAuthorization::authorized; }

    /// The wizard appears at this step, whose permission is missing.
    void appearAt(Step wanted) {
        if (wanted > Step::microphone) {
            grantMicrophone();
        }
        keyEvents.trusted = wanted > Step::accessibility;
        appear();
        ASSERT_EQ(step(), wanted);
    }
};

} // namespace quorvin::testing
