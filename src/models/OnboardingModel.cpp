#include "models/OnboardingModel.h"

#include "models/AppState.h"
#include "platform/AudioHost.h"
#include "platform/KeyEvents.h"
#include "platform/Platform.h"

#include <QPointer>

#include <utility>

using namespace std::chrono_literals;

namespace quorvin {

namespace {

constexpr auto microphonePeriod = 1500ms;
constexpr auto accessibilityPeriod = 1s;
constexpr auto automationPeriod = 2s;
/// So that a grant is seen before its step goes.
constexpr auto advanceDelay = 800ms;
/// From how many looks on an old entry of the system may be in the way.
constexpr int warningTicks = 3;

} // namespace

OnboardingModel::OnboardingModel(AppState& appState, const Platform& platform)
    : m_appState(appState)
    , m_scheduler(platform.scheduler)
    , m_audioHost(platform.audioHost)
    , m_keyEvents(platform.keyEvents)
    , m_hints(platform.permissionHints) {}

QString OnboardingModel::hint(OnboardingStep step) const {
    switch (step) {
    case OnboardingStep::microphone:
        return m_hints.microphone;
    case OnboardingStep::accessibility:
        return m_hints.accessibility;
    case OnboardingStep::automation:
        return m_hints.automation;
    case OnboardingStep::done:
        break;
    }
    return {};
}

void OnboardingModel::checkInitialState() {
    stop();
    m_currentStep = OnboardingStep::microphone;
    m_autGranted = false;
    resetAccessibilityWait();
    m_micGranted = isMicrophoneAuthorized();
    m_accGranted = m_appState.testAccessibility();
    if (micGranted() && accGranted()) {
        m_advance = m_scheduler.start([this](CancellationToken) -> Task<> {
            advanceTo(OnboardingStep::automation);
            co_return;
        });
    } else if (micGranted()) {
        // Without the system's question: the user has done nothing yet.
        m_currentStep = OnboardingStep::accessibility;
        startAccessibilityPolling();
    } else {
        startMicrophonePolling();
    }
}

void OnboardingModel::stop() {
    m_pollTimer.cancel();
    m_advance.cancel();
}

void OnboardingModel::advanceTo(OnboardingStep step) {
    m_pollTimer.cancel();
    resetAccessibilityWait();
    m_currentStep = step;
    switch (step) {
    case OnboardingStep::microphone:
        startMicrophonePolling();
        break;
    case OnboardingStep::accessibility:
        m_appState.agentService().setAccessibilityGranted(m_keyEvents.requestTrust());
        startAccessibilityPolling();
        break;
    case OnboardingStep::automation:
        startAutomationPolling();
        break;
    case OnboardingStep::done:
        break;
    }
}

void OnboardingModel::advanceLater(OnboardingStep step) {
    m_advance = m_scheduler.startAfter(advanceDelay, [this, step, from = currentStep()] {
        if (currentStep() == from) {
            advanceTo(step);
        }
    });
}

void OnboardingModel::resetAccessibilityWait() {
    m_showAccessibilityWarning = false;
    m_accPollTicks = 0;
}

void OnboardingModel::startMicrophonePolling() {
    startPolling(
        microphonePeriod, [this]() -> Task<bool> { co_return isMicrophoneAuthorized(); },
        [this] {
            takeMicrophone(true);
            advanceLater(OnboardingStep::accessibility);
        },
        [] {});
}

void OnboardingModel::startAccessibilityPolling() {
    resetAccessibilityWait();
    startPolling(
        accessibilityPeriod, [this]() -> Task<bool> { co_return m_appState.testAccessibility(); },
        [this] {
            m_accGranted = true;
            m_appState.setAccessibilityAuthorized(true);
            m_showAccessibilityWarning = false;
            advanceLater(OnboardingStep::automation);
        },
        [this] {
            m_accPollTicks = accPollTicks() + 1;
            m_showAccessibilityWarning = accPollTicks() >= warningTicks;
        });
}

void OnboardingModel::startAutomationPolling() {
    startPolling(
        automationPeriod, [this] { return m_appState.agentService().checkAutomationPermission(); },
        [this] {
            m_autGranted = true;
            m_appState.setAutomationAuthorized(true);
            advanceLater(OnboardingStep::done);
        },
        [] {});
}

void OnboardingModel::startPolling(Scheduler::Duration period, Test isGranted, Notice onGranted,
                                   Notice onMissing) {
    m_pollTimer =
        m_scheduler.start([&scheduler = m_scheduler, period, isGranted = std::move(isGranted),
                           onGranted = std::move(onGranted),
                           onMissing = std::move(onMissing)](CancellationToken token) -> Task<> {
            // Not cancelled means that the object lives, too.
            bool granted = co_await isGranted();
            while (!granted && !token.isCancelled()) {
                co_await scheduler.sleep(period);
                if (token.isCancelled()) {
                    co_return;
                }
                granted = co_await isGranted();
                if (!granted && !token.isCancelled()) {
                    onMissing();
                }
            }
            if (!token.isCancelled()) {
                onGranted();
            }
        });
}

bool OnboardingModel::isMicrophoneAuthorized() const {
    return m_audioHost.authorizationStatus() == MicrophoneAuthorization::authorized;
}

void OnboardingModel::takeMicrophone(bool granted) {
    m_micGranted = granted;
    m_appState.setMicrophoneAuthorized(granted);
}

void OnboardingModel::requestMicPermission() {
    if (isMicRequestPending()) {
        return;
    }
    const MicrophoneAuthorization status = m_audioHost.authorizationStatus();
    if (status != MicrophoneAuthorization::notDetermined) {
        takeMicrophone(status == MicrophoneAuthorization::authorized);
        return;
    }
    m_isMicRequestPending = true;
    m_scheduler.startDetached([self = QPointer(this), &host = m_audioHost]() -> Task<> {
        const bool granted = co_await host.requestAccess();
        if (self) {
            self->m_isMicRequestPending = false;
            self->takeMicrophone(granted);
        }
    });
}

void OnboardingModel::openAccessibilitySettings() {
    m_appState.agentService().openAccessibilitySettings();
}

void OnboardingModel::continueWithoutTest() {
    advanceTo(OnboardingStep::automation);
}

void OnboardingModel::requestAutomationPermissions() {
    m_appState.agentService().requestAutomationPermissions();
}

void OnboardingModel::openAutomationSettings() {
    m_appState.agentService().openAutomationSettings();
}

void OnboardingModel::completeWizard() {
    stop();
    m_appState.completeOnboarding();
}

} // namespace quorvin
