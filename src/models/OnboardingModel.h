#pragma once

#include "platform/PermissionHints.h"
#include "platform/Scheduler.h"
#include "support/Task.h"

#include <QObject>
#include <QProperty>

#include <functional>

namespace quorvin {

class AppState;
class AudioHost;
class KeyEvents;
struct Platform;

/// The wizard of the first start, without its view. It leads through the permissions one by one and
/// looks for each, since they are granted outside of the program. At most one of them is looked for
/// at a time. Main thread only.
class OnboardingModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(OnboardingStep currentStep READ currentStep NOTIFY currentStepChanged)
    Q_PROPERTY(bool micGranted READ micGranted NOTIFY micGrantedChanged)
    Q_PROPERTY(bool accGranted READ accGranted NOTIFY accGrantedChanged)
    Q_PROPERTY(bool autGranted READ autGranted NOTIFY autGrantedChanged)
    Q_PROPERTY(int accPollTicks READ accPollTicks NOTIFY accPollTicksChanged)
    Q_PROPERTY(bool showAccessibilityWarning READ showAccessibilityWarning NOTIFY
                   showAccessibilityWarningChanged)
    Q_PROPERTY(bool isMicRequestPending READ isMicRequestPending NOTIFY isMicRequestPendingChanged)

public:
    /// In the order in which they are passed; none is passed twice in one run.
    enum class OnboardingStep { microphone, accessibility, automation, done };
    Q_ENUM(OnboardingStep)

    /// Both outlive it.
    OnboardingModel(AppState& appState, const Platform& platform);

    [[nodiscard]] OnboardingStep currentStep() const { return m_currentStep; }
    [[nodiscard]] bool micGranted() const { return m_micGranted; }
    [[nodiscard]] bool accGranted() const { return m_accGranted; }
    [[nodiscard]] bool autGranted() const { return m_autGranted; }
    /// How often Accessibility has been looked for since its step began.
    [[nodiscard]] int accPollTicks() const { return m_accPollTicks; }
    /// It takes so long that something must be in the way of the grant.
    [[nodiscard]] bool showAccessibilityWarning() const { return m_showAccessibilityWarning; }
    /// The system asks the user at present.
    [[nodiscard]] bool isMicRequestPending() const { return m_isMicRequestPending; }

    /// What the user can do on this system about the permission of a step; may be empty.
    Q_INVOKABLE [[nodiscard]] QString hint(OnboardingStep step) const;

    /// The view appears: a new run begins, at the first permission that is missing.
    Q_INVOKABLE void checkInitialState();
    /// The view disappears: nothing is looked for any more.
    Q_INVOKABLE void stop();

    /// Has the system ask for the microphone, where it does that. The running poll does the rest.
    Q_INVOKABLE void requestMicPermission();
    Q_INVOKABLE void openAccessibilitySettings();
    /// The user says that it's granted. Deliberate: nothing is tested.
    Q_INVOKABLE void continueWithoutTest();
    Q_INVOKABLE void requestAutomationPermissions();
    Q_INVOKABLE void openAutomationSettings();
    /// Ends the wizard for good, whatever has been granted.
    Q_INVOKABLE void completeWizard();

Q_SIGNALS:
    void currentStepChanged();
    void micGrantedChanged();
    void accGrantedChanged();
    void autGrantedChanged();
    void accPollTicksChanged();
    void showAccessibilityWarningChanged();
    void isMicRequestPendingChanged();

private:
    using Test = std::function<Task<bool>()>;
    using Notice = std::function<void()>;

    void advanceTo(OnboardingStep step);
    void advanceLater(OnboardingStep step);
    void resetAccessibilityWait();

    void startMicrophonePolling();
    void startAccessibilityPolling();
    void startAutomationPolling();
    /// Tests at once, and then once in each period until the answer is yes, which is told by
    /// `onGranted`; every other answer but the first is told by `onMissing`.
    void startPolling(Scheduler::Duration period, Test isGranted, Notice onGranted,
                      Notice onMissing);

    [[nodiscard]] bool isMicrophoneAuthorized() const;
    void takeMicrophone(bool granted);

    AppState& m_appState;
    Scheduler& m_scheduler;
    AudioHost& m_audioHost;
    KeyEvents& m_keyEvents;
    const PermissionHints m_hints;

#define QUORVIN_FIELD(type, name, initial)                                                         \
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(OnboardingModel, type, m_##name, initial,                 \
                                         &OnboardingModel::name##Changed)

    QUORVIN_FIELD(OnboardingStep, currentStep, OnboardingStep::microphone)
    QUORVIN_FIELD(bool, micGranted, false)
    QUORVIN_FIELD(bool, accGranted, false)
    QUORVIN_FIELD(bool, autGranted, false)
    QUORVIN_FIELD(int, accPollTicks, 0)
    QUORVIN_FIELD(bool, showAccessibilityWarning, false)
    QUORVIN_FIELD(bool, isMicRequestPending, false)

#undef QUORVIN_FIELD

    CancellableTask m_pollTimer; ///< the one running poll
    CancellableTask m_advance;   ///< what waits until the user has seen a grant
};

} // namespace quorvin
