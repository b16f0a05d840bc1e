#include "models/AppState.h"

#include "platform/ApplicationBundle.h"
#include "platform/Scheduler.h"
#include "platform/UserDefaults.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <numbers>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

QList<double> randomPhases(qsizetype count) {
    QList<double> phases(count);
    for (double& phase : phases) {
        phase = QRandomGenerator::global()->generateDouble() * 2 * std::numbers::pi;
    }
    return phases;
}

void write(UserDefaults& defaults, const QString& key, const QString& value) {
    defaults.setString(key, value);
}
void write(UserDefaults& defaults, const QString& key, bool value) {
    defaults.setBoolean(key, value);
}
void write(UserDefaults& defaults, const QString& key, int value) {
    defaults.setInteger(key, value);
}
void write(UserDefaults& defaults, const QString& key, double value) {
    defaults.setDouble(key, value);
}

QString modelFileName(const QString& engineTier) {
    if (engineTier == u"large") {
        return u"ggml-large-v3.bin"_s;
    }
    if (engineTier == u"medium") {
        return u"ggml-medium.bin"_s;
    }
    return u"ggml-small.bin"_s;
}

} // namespace

AppState::AppState(const Platform& platform, QObject* parent)
    : QObject(parent)
    , m_platform(platform)
    , m_agentService(platform.scheduler, platform.workspace, platform.makeProcessTable,
                     platform.runInBackground,
                     {platform.pasteboard, platform.keyEvents, platform.terminalAutomation})
    , m_audioService(platform.audioHost, platform.scheduler)
    , m_whisperService(platform.applicationBundle, platform.processRunner, platform.scheduler)
    , m_soundService(SoundService::shared())
    , m_notificationService(NotificationService::shared())
    , m_storedSettings(AppSettings::read(platform.userDefaults))
    , m_barPhaseOffsets(randomPhases(compactBarCount))
    , m_compactWindowController(platform.windowSystem, platform.userDefaults, platform.scheduler,
                                u"compactPanelX"_s, u"compactPanelY"_s) {
    checkPermissions();
    m_microphoneAuthorized =
        platform.audioHost.authorizationStatus() == MicrophoneAuthorization::authorized;
    checkOnboardingNeeded();
    setupAudioObservation();
    setupSettingsObservation();
    initializeServices();
}

AppState::~AppState() {
    m_compactAnimationTask.cancel();
    m_recordingTimer.cancel();
    // What the audio service still publishes on its way out finds nobody.
    disconnect(&m_audioService, nullptr, this, nullptr);
    m_accessibilityPollTask.cancel();
    m_windowGuard.reset();
}

QString AppState::version() const {
    return m_platform.applicationBundle.version().value_or(QString());
}

// --- Settings ------------------------------------------------------------------------------------

template <typename Property, typename Value>
void AppState::store(Property& property, const Value& value, const QString& key) {
    property = value;
    write(m_platform.userDefaults, key, value);
}

void AppState::setLanguage(const QString& language) {
    store(m_language, language, SettingsKey::language);
}
void AppState::setVadAutoStop(bool on) {
    store(m_vadAutoStop, on, SettingsKey::vadAutoStop);
}
void AppState::setSilenceTimeout(int seconds) {
    store(m_silenceTimeout, seconds, SettingsKey::silenceTimeout);
}
void AppState::setSelectedDevice(const QString& id) {
    store(m_selectedDevice, id, SettingsKey::selectedDevice);
}
void AppState::setTranslateToEnglish(bool on) {
    store(m_translateToEnglish, on, SettingsKey::translateToEnglish);
}
void AppState::setAppendMode(bool on) {
    store(m_appendMode, on, SettingsKey::appendMode);
}
void AppState::setWindowOpacity(double opacity) {
    store(m_windowOpacity, opacity, SettingsKey::windowOpacity);
}
void AppState::setEngineTier(const QString& tier) {
    store(m_engineTier, tier, SettingsKey::engineTier);
}
void AppState::setInputGainDB(double decibels) {
    store(m_inputGainDB, decibels, SettingsKey::inputGainDB);
}
void AppState::setNoiseGatePercent(double percent) {
    store(m_noiseGatePercent, percent, SettingsKey::noiseGatePercent);
}
void AppState::setAlwaysOnTop(bool on) {
    store(m_alwaysOnTop, on, SettingsKey::alwaysOnTop);
}
void AppState::setAgentsIncluded(bool on) {
    store(m_agentsIncluded, on, SettingsKey::agentsIncluded);
}
void AppState::setSelectedTheme(const QString& theme) {
    store(m_selectedTheme, theme, SettingsKey::selectedTheme);
}
void AppState::setAnimationStyle(const QString& style) {
    store(m_animationStyle, style, SettingsKey::animationStyle);
}
void AppState::setSoundsEnabled(bool on) {
    store(m_soundsEnabled, on, SettingsKey::soundsEnabled);
    m_soundService.isEnabled = on;
    write(m_platform.userDefaults, SettingsKey::soundsEnabled, m_soundService.isEnabled);
}

void AppState::applyEngineTier() {
    const QString fileName = modelFileName(engineTier());
    const QString path = m_platform.applicationBundle.homeDirectory() + u"/models/"_s + fileName;
    if (!QFileInfo::exists(path)) {
        // The tier keeps its new value although the old model stays loaded, on purpose.
        showError(u"Model not found: "_s + fileName);
        return;
    }
    m_modelLoaded = false;
    m_platform.scheduler.startDetached([self = QPointer(this), path]() -> Task<> {
        if (!self) {
            co_return;
        }
        co_await self->m_whisperService.loadSpecificModel(path);
        if (!self) {
            co_return;
        }
        self->m_modelLoaded = self->m_whisperService.isModelLoaded();
        if (self->modelLoaded()) {
            self->notifyModelLoaded();
        }
    });
}

// --- Activity log, errors, feedback --------------------------------------------------------------

void AppState::log(ActivityType type, const QString& message) {
    QList<ActivityEntry> entries = m_activityLog.value();
    if (entries.size() >= maxLogEntries) {
        entries = entries.last(maxLogEntries - 1);
    }
    ActivityEntry entry;
    entry.type = type;
    entry.message = message;
    entry.timestamp = m_platform.scheduler.wallTime();
    entries.append(entry);
    m_activityLog = entries;
}

void AppState::clearActivityLog() {
    m_activityLog = QList<ActivityEntry>();
}

void AppState::showError(const QString& message) {
    m_isAccessibilityError = message.toLower().contains(u"accessibility"_s);
    m_errorMessage = message;
    m_showError = true;
}

void AppState::dismissError() {
    m_showError = false;
    m_errorMessage = std::nullopt;
    m_isAccessibilityError = false;
}

void AppState::openAccessibilitySettings() {
    dismissError();
    m_agentService.openAccessibilitySettings();
}

void AppState::showCompactFeedback(const QString& text, double duration) {
    m_compactFeedbackTask.cancel();
    m_compactFeedback = text;
    const auto time =
        std::chrono::duration_cast<Scheduler::Duration>(std::chrono::duration<double>(duration));
    m_compactFeedbackTask =
        m_platform.scheduler.startAfter(time, [this] { m_compactFeedback = QString(); });
}

// --- History -------------------------------------------------------------------------------------

void AppState::loadHistory() {
    constexpr int dialogRows = 50;
    if (!m_historyService) {
        m_historyEntries = QList<HistoryEntry>();
        return;
    }
    try {
        m_historyEntries = m_historyService->recentEntries(dialogRows);
    } catch (const HistoryError&) {
        // The dialog keeps showing what was read last.
        return;
    }
}

void AppState::clearHistory() {
    if (m_historyService) {
        try {
            m_historyService->clear();
        } catch (const HistoryError&) {
            // The list is emptied all the same; its rows are back when it is next loaded.
        }
    }
    m_historyEntries = QList<HistoryEntry>();
}

} // namespace quorvin
