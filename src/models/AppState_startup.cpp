#include "models/AppState.h"
#include "platform/ApplicationBundle.h"
#include "platform/AudioHost.h"
#include "platform/Scheduler.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

Q_LOGGING_CATEGORY(appStateLog, "com.quorvin.AppState", QtInfoMsg)

constexpr auto accessibilityPollPeriod = std::chrono::seconds(30);
constexpr double revocationFeedback = 5.0; // seconds

} // namespace

void AppState::checkPermissions() {
    m_accessibilityAuthorized = testAccessibility();
    m_platform.scheduler.startDetached([self = QPointer(this)]() -> Task<> {
        if (!self) {
            co_return;
        }
        const bool granted = co_await self->m_agentService.checkAutomationPermission();
        if (self) {
            self->m_automationAuthorized = granted;
            self->m_isAutomationKnown = true;
        }
    });
}

void AppState::checkOnboardingNeeded() {
    m_onboardingComplete =
        m_platform.userDefaults.boolean(SettingsKey::onboardingComplete).value_or(false);
    m_accessibilityAuthorized = testAccessibility();
    // The permissions don't enter: who finished the wizard once is not sent back to it.
    m_needsOnboarding = !onboardingComplete();
}

void AppState::completeOnboarding() {
    m_onboardingComplete = true;
    m_platform.userDefaults.setBoolean(SettingsKey::onboardingComplete, true);
    m_needsOnboarding = false;
}

void AppState::resetOnboarding() {
    m_onboardingComplete = false;
    m_platform.userDefaults.setBoolean(SettingsKey::onboardingComplete, false);
    m_needsOnboarding = true;
}

void AppState::setMicrophoneAuthorized(bool authorized) {
    m_microphoneAuthorized = authorized;
    if (authorized) {
        // Or every take would be refused until the next start.
        m_audioService.setPermissionGranted(true);
    }
}

QList<AudioInputDevice> AppState::systemDefaultOnly() {
    return {AudioInputDevice{u"default"_s, u"System Default"_s, 0}};
}

void AppState::setupAudioObservation() {
    connect(&m_audioService, &AudioService::audioLevelChanged, this,
            [this] { m_audioLevel = m_audioService.audioLevel(); });
    connect(&m_audioService, &AudioService::fftBandsChanged, this,
            [this] { m_compactFftBands = m_audioService.fftBands(); });
}

void AppState::initializeServices() {
    m_soundService.isEnabled = soundsEnabled();
    m_platform.userDefaults.setBoolean(SettingsKey::soundsEnabled, m_soundService.isEnabled);
    cleanupOrphanedWAVFiles();
    const QString version = m_platform.applicationBundle.version().value_or(u"?"_s);
    log(ActivityType::info, u"Quorvin v%1 starting..."_s.arg(version));
    openHistory();
    refreshInputDevices();
    log(ActivityType::settings,
        u"Audio devices: %1 found"_s.arg(m_availableDevices.value().size()));
    m_platform.scheduler.startDetached([self = QPointer(this)]() -> Task<> {
        if (self) {
            co_await self->checkForUpdates();
        }
    });
    loadModel();
    if (microphoneAuthorized() && m_audioService.permissionGranted()) {
        m_audioService.startKeepWarm();
    }
    // The stored device is not forwarded, on purpose: it takes effect with its next change.
    applyLanguage();
    applyTranslateToEnglish();
    applyInputGain();
    applyNoiseGate();
    startAccessibilityPolling();
}

void AppState::startAccessibilityPolling() {
    m_accessibilityPollTask =
        m_platform.scheduler.start([self = QPointer(this), &scheduler = m_platform.scheduler](
                                       CancellationToken token) -> Task<> {
            while (!token.isCancelled()) {
                co_await scheduler.sleep(accessibilityPollPeriod);
                if (!self || token.isCancelled()) {
                    co_return;
                }
                self->handleAccessibilityChange(self->testAccessibility());
            }
        });
}

void AppState::handleAccessibilityChange(bool granted) {
    if (granted == accessibilityAuthorized()) {
        return;
    }
    m_accessibilityAuthorized = granted;
    if (granted) {
        log(ActivityType::success, u"Accessibility permission granted ✓ — ready to send"_s);
        return;
    }
    log(ActivityType::error, u"Accessibility revoked — re-grant in System Settings"_s);
    showCompactFeedback(u"⚠ re-grant Accessibility"_s, revocationFeedback);
    m_agentService.openAccessibilitySettings();
}

void AppState::cleanupOrphanedWAVFiles() {
    const QDir directory(m_platform.applicationBundle.temporaryDirectory());
    int found = 0;
    const auto entries = directory.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                                 QDir::NoDotAndDotDot);
    for (const QFileInfo& entry : entries) {
        if (entry.fileName().startsWith(u"quorvin_"_s) && entry.suffix() == u"wav") {
            ++found;
            QFile::remove(entry.filePath());
        }
    }
    if (found > 0) {
        log(ActivityType::info, u"Cleaned up %1 orphaned WAV file(s) from /tmp"_s.arg(found));
    }
}

void AppState::openHistory() {
    try {
        m_historyService =
            std::make_unique<HistoryService>(m_platform.applicationBundle, m_platform.scheduler);
    } catch (const HistoryError& error) {
        log(ActivityType::error,
            u"History service failed: %1"_s.arg(QString::fromUtf8(error.what())));
        qCCritical(appStateLog, "No history: %s", error.what());
        return;
    }
    log(ActivityType::success, u"History service initialized"_s);
}

void AppState::loadModel() {
    m_platform.scheduler.startDetached([self = QPointer(this)]() -> Task<> {
        if (!self) {
            co_return;
        }
        self->log(ActivityType::model, u"Loading Whisper model..."_s);
        co_await self->m_whisperService.loadModel();
        if (!self) {
            co_return;
        }
        self->m_modelLoaded = self->m_whisperService.isModelLoaded();
        if (self->modelLoaded()) {
            self->log(ActivityType::success, u"Whisper model loaded and ready"_s);
            self->notifyModelLoaded();
        } else {
            self->log(ActivityType::error, u"Failed to load Whisper model"_s);
        }
    });
}

void AppState::notifyModelLoaded() {
    m_notificationService.send(u"model-loaded"_s, u"Quorvin Ready"_s, u"Speech engine loaded"_s,
                               u"device"_s, NotificationSound::standard);
}

} // namespace quorvin
