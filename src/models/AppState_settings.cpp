#include "models/AppState.h"
#include "platform/AudioHost.h"
#include "platform/Scheduler.h"
#include "platform/Workspace.h"
#include "services/records/PerformanceMetrics.h"

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

void AppState::setupSettingsObservation() {
    connect(&m_agentService, &AgentService::claudeSessionsChanged, this,
            &AppState::claudeSessionCountChanged);
    connect(&m_agentService, &AgentService::opencodeSessionsChanged, this,
            &AppState::opencodeSessionCountChanged);
    connect(&PerformanceMetrics::shared(), &PerformanceMetrics::samplesChanged, this,
            &AppState::latenciesChanged);
}

// --- Handing settings on -------------------------------------------------------------------------

void AppState::applyLanguage() {
    m_whisperService.language = language();
}

void AppState::applyTranslateToEnglish() {
    m_whisperService.translateToEnglish = translateToEnglish();
}

void AppState::applySelectedDevice() {
    m_audioService.selectDevice(selectedDevice());
}

void AppState::applyInputGain() {
    m_audioService.setInputGain(inputGainDB());
}

void AppState::applyNoiseGate() {
    m_audioService.setNoiseGate(noiseGatePercent() / 100);
}

void AppState::refreshInputDevices() {
    m_availableDevices = m_audioService.listInputDevices();
}

// --- What the settings show ----------------------------------------------------------------------

int AppState::claudeSessionCount() const {
    return static_cast<int>(m_agentService.claudeSessions().size());
}

int AppState::opencodeSessionCount() const {
    return static_cast<int>(m_agentService.opencodeSessions().size());
}

QList<LatencySummary> AppState::latencies() {
    return summarize(PerformanceMetrics::shared());
}

void AppState::clearLatencies() {
    PerformanceMetrics::shared().clear();
}

// --- Permissions ---------------------------------------------------------------------------------

void AppState::refreshPermissions() {
    m_microphoneAuthorized =
        m_platform.audioHost.authorizationStatus() == MicrophoneAuthorization::authorized;
    checkPermissions();
}

void AppState::openMicrophoneSettings() {
    m_platform.workspace.openURL(
        u"x-apple.systempreferences:com.apple.preference.security?Privacy_Microphone"_s);
}

void AppState::grantAccessibility() {
    m_agentService.openAccessibilitySettings();
}

void AppState::grantAutomation() {
    m_agentService.requestAutomationPermissions();
    m_agentService.openAutomationSettings();
}

// --- Updates and links ---------------------------------------------------------------------------

void AppState::checkForUpdatesNow() {
    if (isCheckingForUpdates()) {
        return;
    }
    m_isCheckingForUpdates = true;
    m_platform.scheduler.startDetached([self = QPointer(this)]() -> Task<> {
        if (!self) {
            co_return;
        }
        co_await self->checkForUpdates();
        if (self) {
            self->m_isCheckingForUpdates = false;
        }
    });
}

void AppState::openRepositoryPage() {
    m_platform.workspace.openURL(QStringLiteral(QUORVIN_REPOSITORY_PAGE));
}

void AppState::openReleasesPage() {
    m_platform.workspace.openURL(QStringLiteral(QUORVIN_RELEASES_PAGE));
}

} // namespace quorvin
