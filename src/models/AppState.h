#pragma once

#include "models/ActivityEntry.h"
#include "models/AppSettings.h"
#include "models/CompactSessionInfo.h"
#include "models/CompactWindowController.h"
#include "models/LatencySummary.h"
#include "models/OnboardingModel.h"
#include "models/UpdatePhase.h"
#include "platform/Platform.h"
#include "platform/WindowSystem.h"
#include "services/agents/AgentService.h"
#include "services/audio/AudioService.h"
#include "services/records/HistoryService.h"
#include "services/signals/NotificationService.h"
#include "services/signals/SoundService.h"
#include "services/transcription/WhisperService.h"
#include "support/Task.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QProperty>
#include <QUrl>

#include <memory>
#include <optional>
#include <vector>

namespace quorvin {

/// The spine of the program: one observable object that owns every service, holds every value that
/// a view shows and carries every flow as its methods. Made once, lives to the end of the process.
/// Main thread only.
///
/// The instances called shared (sounds, notifications, metrics) must exist before it.
class AppState : public QObject {
    Q_OBJECT

public:
    /// The coarse mode for views. Whoever must know whether a take runs reads `isRecording`.
    enum class AppMode { idle, ready, recording, transcribing };
    Q_ENUM(AppMode)
    enum class ActiveWindow { main, compact };
    Q_ENUM(ActiveWindow)

    static constexpr int maxLogEntries = 50;
    static constexpr int maxAttachedImages = 18;
    static constexpr int compactBarCount = 96;

    explicit AppState(const Platform& platform, QObject* parent = nullptr);
    ~AppState() override;

    // The services, for views that observe them directly.
    [[nodiscard]] AgentService& agentService() { return m_agentService; }
    [[nodiscard]] AudioService& audioService() { return m_audioService; }
    [[nodiscard]] WhisperService& whisperService() { return m_whisperService; }
    /// Empty when the store could not be opened.
    [[nodiscard]] HistoryService* historyService() { return m_historyService.get(); }

    /// "1.2.3"; empty when the bundle names none.
    Q_PROPERTY(QString version READ version CONSTANT)
    [[nodiscard]] QString version() const;

    // --- Settings: every setter stores the value at once -----------------------------------------
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY languageChanged)
    Q_PROPERTY(bool vadAutoStop READ vadAutoStop WRITE setVadAutoStop NOTIFY vadAutoStopChanged)
    Q_PROPERTY(
        int silenceTimeout READ silenceTimeout WRITE setSilenceTimeout NOTIFY silenceTimeoutChanged)
    Q_PROPERTY(QString selectedDevice READ selectedDevice WRITE setSelectedDevice NOTIFY
                   selectedDeviceChanged)
    Q_PROPERTY(bool translateToEnglish READ translateToEnglish WRITE setTranslateToEnglish NOTIFY
                   translateToEnglishChanged)
    Q_PROPERTY(bool appendMode READ appendMode WRITE setAppendMode NOTIFY appendModeChanged)
    Q_PROPERTY(
        double windowOpacity READ windowOpacity WRITE setWindowOpacity NOTIFY windowOpacityChanged)
    Q_PROPERTY(QString engineTier READ engineTier WRITE setEngineTier NOTIFY engineTierChanged)
    Q_PROPERTY(double inputGainDB READ inputGainDB WRITE setInputGainDB NOTIFY inputGainDBChanged)
    Q_PROPERTY(double noiseGatePercent READ noiseGatePercent WRITE setNoiseGatePercent NOTIFY
                   noiseGatePercentChanged)
    Q_PROPERTY(bool alwaysOnTop READ alwaysOnTop WRITE setAlwaysOnTop NOTIFY alwaysOnTopChanged)
    Q_PROPERTY(bool agentsIncluded READ agentsIncluded WRITE setAgentsIncluded NOTIFY
                   agentsIncludedChanged)
    Q_PROPERTY(
        QString selectedTheme READ selectedTheme WRITE setSelectedTheme NOTIFY selectedThemeChanged)
    Q_PROPERTY(QString animationStyle READ animationStyle WRITE setAnimationStyle NOTIFY
                   animationStyleChanged)
    Q_PROPERTY(
        bool soundsEnabled READ soundsEnabled WRITE setSoundsEnabled NOTIFY soundsEnabledChanged)

    [[nodiscard]] QString language() const { return m_language; }
    [[nodiscard]] bool vadAutoStop() const { return m_vadAutoStop; }
    [[nodiscard]] int silenceTimeout() const { return m_silenceTimeout; }
    [[nodiscard]] QString selectedDevice() const { return m_selectedDevice; }
    [[nodiscard]] bool translateToEnglish() const { return m_translateToEnglish; }
    [[nodiscard]] bool appendMode() const { return m_appendMode; }
    [[nodiscard]] double windowOpacity() const { return m_windowOpacity; }
    [[nodiscard]] QString engineTier() const { return m_engineTier; }
    [[nodiscard]] double inputGainDB() const { return m_inputGainDB; }
    [[nodiscard]] double noiseGatePercent() const { return m_noiseGatePercent; }
    [[nodiscard]] bool alwaysOnTop() const { return m_alwaysOnTop; }
    [[nodiscard]] bool agentsIncluded() const { return m_agentsIncluded; }
    [[nodiscard]] QString selectedTheme() const { return m_selectedTheme; }
    [[nodiscard]] QString animationStyle() const { return m_animationStyle; }
    [[nodiscard]] bool soundsEnabled() const { return m_soundsEnabled; }

    void setLanguage(const QString& language);
    void setVadAutoStop(bool on);
    void setSilenceTimeout(int seconds);
    void setSelectedDevice(const QString& id);
    void setTranslateToEnglish(bool on);
    void setAppendMode(bool on);
    void setWindowOpacity(double opacity);
    void setEngineTier(const QString& tier);
    void setInputGainDB(double decibels);
    void setNoiseGatePercent(double percent);
    void setAlwaysOnTop(bool on);
    void setAgentsIncluded(bool on);
    void setSelectedTheme(const QString& theme);
    void setAnimationStyle(const QString& style);
    void setSoundsEnabled(bool on);

    // Each hands a setting to whom it concerns. The views do that where a setting is changed.
    Q_INVOKABLE void applyLanguage();
    Q_INVOKABLE void applyTranslateToEnglish();
    Q_INVOKABLE void applySelectedDevice();
    Q_INVOKABLE void applyInputGain();
    Q_INVOKABLE void applyNoiseGate();
    /// Loads the model of `engineTier` from the models folder of the home directory.
    Q_INVOKABLE void applyEngineTier();

    /// Lists the microphones anew; a running take goes on.
    Q_INVOKABLE void refreshInputDevices();

    // The pages of the project on the web.
    Q_INVOKABLE void openRepositoryPage();
    Q_INVOKABLE void openReleasesPage();

    // --- Latencies -------------------------------------------------------------------------------
    /// A row for each kind of step that is measured.
    Q_PROPERTY(QList<quorvin::LatencySummary> latencies READ latencies NOTIFY latenciesChanged)
    [[nodiscard]] static QList<LatencySummary> latencies();
    Q_INVOKABLE void clearLatencies();

    // --- Activity log, errors, feedback ----------------------------------------------------------
    Q_PROPERTY(QList<quorvin::ActivityEntry> activityLog READ activityLog NOTIFY activityLogChanged)
    Q_PROPERTY(bool showActivityLog READ showActivityLog WRITE setShowActivityLog NOTIFY
                   showActivityLogChanged)
    /// Empty while there is no error.
    Q_PROPERTY(QString errorMessage READ errorMessageText NOTIFY errorMessageChanged)
    Q_PROPERTY(bool showError READ showError NOTIFY showErrorChanged)
    Q_PROPERTY(
        bool isAccessibilityError READ isAccessibilityError NOTIFY isAccessibilityErrorChanged)
    Q_PROPERTY(QString compactFeedback READ compactFeedback NOTIFY compactFeedbackChanged)

    /// Oldest first, at most `maxLogEntries`.
    [[nodiscard]] QList<ActivityEntry> activityLog() const { return m_activityLog; }
    [[nodiscard]] bool showActivityLog() const { return m_showActivityLog; }
    void setShowActivityLog(bool show) { m_showActivityLog = show; }
    [[nodiscard]] std::optional<QString> errorMessage() const { return m_errorMessage; }
    [[nodiscard]] QString errorMessageText() const { return errorMessage().value_or(QString()); }
    [[nodiscard]] bool showError() const { return m_showError; }
    [[nodiscard]] bool isAccessibilityError() const { return m_isAccessibilityError; }
    [[nodiscard]] QString compactFeedback() const { return m_compactFeedback; }

    void log(ActivityType type, const QString& message);
    Q_INVOKABLE void clearActivityLog();
    /// Opens the error dialog.
    void showError(const QString& message);
    Q_INVOKABLE void dismissError();
    /// Where the user can grant what `isAccessibilityError` is about; the dialog goes.
    Q_INVOKABLE void openAccessibilitySettings();
    /// Shows a status line in the panel for `duration` seconds.
    void showCompactFeedback(const QString& text, double duration);

    // --- Dictation -------------------------------------------------------------------------------
    Q_PROPERTY(AppMode state READ state NOTIFY stateChanged)
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY isRecordingChanged)
    Q_PROPERTY(bool isTranscribing READ isTranscribing NOTIFY isTranscribingChanged)
    Q_PROPERTY(double audioLevel READ audioLevel NOTIFY audioLevelChanged)
    Q_PROPERTY(double recordingDuration READ recordingDuration NOTIFY recordingDurationChanged)
    Q_PROPERTY(bool modelLoaded READ modelLoaded NOTIFY modelLoadedChanged)
    Q_PROPERTY(QList<quorvin::AudioInputDevice> availableDevices READ availableDevices NOTIFY
                   availableDevicesChanged)

    [[nodiscard]] AppMode state() const { return m_state; }
    [[nodiscard]] bool isRecording() const { return m_isRecording; }
    [[nodiscard]] bool isTranscribing() const { return m_isTranscribing; }
    /// 0 to 1.
    [[nodiscard]] double audioLevel() const { return m_audioLevel; }
    /// Seconds, counted in ticks of the take.
    [[nodiscard]] double recordingDuration() const { return m_recordingDuration; }
    [[nodiscard]] bool modelLoaded() const { return m_modelLoaded; }
    [[nodiscard]] QList<AudioInputDevice> availableDevices() const { return m_availableDevices; }
    /// The application that dictation is for; survives from take to take.
    [[nodiscard]] std::optional<ProcessID> lastFocusedAppPID() const { return m_lastFocusedAppPID; }

    Q_INVOKABLE void startRecording();
    Q_INVOKABLE void stopRecording();
    Q_INVOKABLE void toggleRecording();
    /// Ends the take and drops it.
    Q_INVOKABLE void cancelRecording();

    // --- Draft -----------------------------------------------------------------------------------
    Q_PROPERTY(QString draftText READ draftText WRITE setDraftText NOTIFY draftTextChanged)
    Q_PROPERTY(QList<QUrl> attachedImages READ attachedImages NOTIFY attachedImagesChanged)

    [[nodiscard]] QString draftText() const { return m_draftText; }
    void setDraftText(const QString& text) { m_draftText = text; }
    [[nodiscard]] QList<QUrl> attachedImages() const { return m_attachedImages; }

    /// Cuts the draft behind its last but one sentence mark.
    Q_INVOKABLE void deleteLastPhrase();
    /// Puts the newest history text that differs from the draft into the draft.
    Q_INVOKABLE void loadPreviousPhrase();
    /// Takes as many as there is room for, from the front.
    Q_INVOKABLE void attachImages(const QList<QUrl>& urls);
    Q_INVOKABLE void removeImage(const QUrl& url);
    Q_INVOKABLE void clearImages();
    /// Text and images.
    Q_INVOKABLE void clearDraft();
    /// Adds what the user has selected in any program, or else what the pasteboard holds.
    Q_INVOKABLE void pickUpSelection();
    Q_INVOKABLE void copyToPasteboard(const QString& text);

    // --- History ---------------------------------------------------------------------------------
    Q_PROPERTY(bool showHistory READ showHistory WRITE setShowHistory NOTIFY showHistoryChanged)
    Q_PROPERTY(QList<quorvin::HistoryEntry> historyEntries READ historyEntries NOTIFY
                   historyEntriesChanged)

    [[nodiscard]] bool showHistory() const { return m_showHistory; }
    void setShowHistory(bool show) { m_showHistory = show; }
    [[nodiscard]] QList<HistoryEntry> historyEntries() const { return m_historyEntries; }

    /// Fills `historyEntries`, newest first; they stay as they are when the store can't be read.
    Q_INVOKABLE void loadHistory();
    /// Empties the store, if it can, and `historyEntries` in any case.
    Q_INVOKABLE void clearHistory();

    // --- Delivery --------------------------------------------------------------------------------
    Q_PROPERTY(bool showSessionPicker READ showSessionPicker WRITE setShowSessionPicker NOTIFY
                   showSessionPickerChanged)
    Q_PROPERTY(QList<quorvin::AgentSessionInfo> sessionPickerSessions READ sessionPickerSessions
                   NOTIFY sessionPickerSessionsChanged)
    Q_PROPERTY(QString sessionPickerTitle READ sessionPickerTitle NOTIFY sessionPickerTitleChanged)
    /// As the last scan found them.
    Q_PROPERTY(int claudeSessionCount READ claudeSessionCount NOTIFY claudeSessionCountChanged)
    Q_PROPERTY(
        int opencodeSessionCount READ opencodeSessionCount NOTIFY opencodeSessionCountChanged)

    [[nodiscard]] bool showSessionPicker() const { return m_showSessionPicker; }
    void setShowSessionPicker(bool show) { m_showSessionPicker = show; }
    [[nodiscard]] QList<AgentSessionInfo> sessionPickerSessions() const {
        return m_sessionPickerSessions;
    }
    [[nodiscard]] QString sessionPickerTitle() const { return m_sessionPickerTitle; }
    [[nodiscard]] int claudeSessionCount() const;
    [[nodiscard]] int opencodeSessionCount() const;

    /// To the agent's session, of a fresh scan; with several, the picker opens. Return at once.
    Q_INVOKABLE void sendToClaude();
    Q_INVOKABLE void sendToOpenCode();
    /// The delivery itself. Draft and images are gone afterwards, whatever came of it.
    Task<> sendToSession(AgentSessionInfo session, QString agentName);
    /// The picker's choice.
    Q_INVOKABLE void sendToPickedSession(const quorvin::AgentSessionInfo& session);
    /// The panel's send key.
    Q_INVOKABLE void compactSendCommand();
    /// To the application that was in front when the last take began.
    void autoSendToFocusedTerminal();
    /// To a row of `compactSessions`; text only.
    void sendToCompactSession(int index);
    /// Scans, unless the last scan is fresh and found something.
    Q_INVOKABLE void refreshSessions();
    /// Tries the way to the focused terminal with a fixed text and logs each step. Overwrites the
    /// pasteboard, and leaves the draft alone.
    Q_INVOKABLE void testSendDiagnostic();

    // --- Start-up and permissions ----------------------------------------------------------------
    Q_PROPERTY(bool needsOnboarding READ needsOnboarding NOTIFY needsOnboardingChanged)
    Q_PROPERTY(bool onboardingComplete READ onboardingComplete NOTIFY onboardingCompleteChanged)
    Q_PROPERTY(
        bool microphoneAuthorized READ microphoneAuthorized NOTIFY microphoneAuthorizedChanged)
    Q_PROPERTY(bool accessibilityAuthorized READ accessibilityAuthorized NOTIFY
                   accessibilityAuthorizedChanged)
    Q_PROPERTY(
        bool automationAuthorized READ automationAuthorized NOTIFY automationAuthorizedChanged)
    /// False while nobody has answered yet whether terminals may be controlled.
    Q_PROPERTY(bool isAutomationKnown READ isAutomationKnown NOTIFY isAutomationKnownChanged)

    [[nodiscard]] bool needsOnboarding() const { return m_needsOnboarding; }
    [[nodiscard]] bool onboardingComplete() const { return m_onboardingComplete; }
    [[nodiscard]] bool microphoneAuthorized() const { return m_microphoneAuthorized; }
    [[nodiscard]] bool accessibilityAuthorized() const { return m_accessibilityAuthorized; }
    [[nodiscard]] bool automationAuthorized() const { return m_automationAuthorized; }
    [[nodiscard]] bool isAutomationKnown() const { return m_isAutomationKnown; }

    /// The wizard that shows while `needsOnboarding`.
    Q_PROPERTY(quorvin::OnboardingModel* onboarding READ onboarding CONSTANT)
    [[nodiscard]] OnboardingModel* onboarding() { return &m_onboarding; }

    void checkOnboardingNeeded();
    /// The user has been through the wizard, or doesn't want it.
    void completeOnboarding();
    /// Puts the wizard back.
    Q_INVOKABLE void resetOnboarding();

    /// A microphone that has come late may be used at once.
    void setMicrophoneAuthorized(bool authorized);
    void setAccessibilityAuthorized(bool authorized) { m_accessibilityAuthorized = authorized; }
    void setAutomationAuthorized(bool authorized) { m_automationAuthorized = authorized; }
    /// Whether keys may be posted, asked anew.
    bool testAccessibility();
    /// Asks for all three permissions anew; the answer about automation comes later.
    Q_INVOKABLE void refreshPermissions();
    // Where the user can grant them.
    Q_INVOKABLE void openMicrophoneSettings();
    Q_INVOKABLE void grantAccessibility();
    /// Has the system ask the user before.
    Q_INVOKABLE void grantAutomation();

    // --- Windows ---------------------------------------------------------------------------------
    Q_PROPERTY(ActiveWindow activeWindow READ activeWindow NOTIFY activeWindowChanged)
    Q_PROPERTY(bool isCompactMode READ isCompactMode NOTIFY isCompactModeChanged)

    [[nodiscard]] ActiveWindow activeWindow() const { return m_activeWindow; }
    [[nodiscard]] bool isCompactMode() const { return m_isCompactMode; }

    /// Hides every window but panels, and sends back those that come forward, the settings
    /// excepted.
    Q_INVOKABLE void switchToCompactMode();
    /// Brings the main window back; `stealFocus` takes the keyboard focus from other programs.
    Q_INVOKABLE void switchToMainWindow(bool stealFocus);
    /// Whether the user has ever switched windows.
    [[nodiscard]] bool didUserTriggerWindowSwitch() const { return m_didUserTriggerWindowSwitch; }

    /// The window that compact mode replaces; empty when there is none.
    [[nodiscard]] std::shared_ptr<AppWindow> mainWindow();

    /// Both act on the main window and do nothing without one.
    Q_INVOKABLE void applyAlwaysOnTop();
    Q_INVOKABLE void applyWindowOpacity();

    // --- Compact mode ----------------------------------------------------------------------------
    Q_PROPERTY(
        QList<double> compactBarHeights READ compactBarHeights NOTIFY compactBarHeightsChanged)
    Q_PROPERTY(double compactElapsed READ compactElapsed NOTIFY compactElapsedChanged)
    Q_PROPERTY(double compactSmoothLevel READ compactSmoothLevel NOTIFY compactSmoothLevelChanged)
    Q_PROPERTY(bool compactSessionsVisible READ compactSessionsVisible NOTIFY
                   compactSessionsVisibleChanged)
    Q_PROPERTY(int compactScrollOffset READ compactScrollOffset NOTIFY compactScrollOffsetChanged)

    [[nodiscard]] QList<double> compactBarHeights() const { return m_compactBarHeights; }
    /// Milliseconds.
    [[nodiscard]] double compactElapsed() const { return m_compactElapsed; }
    [[nodiscard]] double compactSmoothLevel() const { return m_compactSmoothLevel; }
    [[nodiscard]] bool compactSessionsVisible() const { return m_compactSessionsVisible; }
    [[nodiscard]] int compactScrollOffset() const { return m_compactScrollOffset; }
    [[nodiscard]] QList<CompactSessionInfo> compactSessions() const { return m_compactSessions; }
    [[nodiscard]] CompactWindowController& compactWindowController() {
        return m_compactWindowController;
    }

    /// Moves the equalizer, from the panel's appearance to its end: about 30 frames a second during
    /// a take or a transcription, 10 at rest. Starting again begins anew.
    Q_INVOKABLE void startCompactAnimation();
    Q_INVOKABLE void stopCompactAnimation();

    // --- Updates ---------------------------------------------------------------------------------
    /// The last check found a newer build; the two texts are written only then.
    Q_PROPERTY(bool updateAvailable READ updateAvailable NOTIFY updateAvailableChanged)
    Q_PROPERTY(QString latestVersion READ latestVersion NOTIFY latestVersionChanged)
    Q_PROPERTY(QString latestDownloadURL READ latestDownloadURL NOTIFY latestDownloadURLChanged)
    Q_PROPERTY(quorvin::UpdatePhase updatePhase READ updatePhase NOTIFY updatePhaseChanged)
    /// A check that the user has asked for is under way.
    Q_PROPERTY(
        bool isCheckingForUpdates READ isCheckingForUpdates NOTIFY isCheckingForUpdatesChanged)

    [[nodiscard]] bool updateAvailable() const { return m_updateAvailable; }
    [[nodiscard]] QString latestVersion() const { return m_latestVersion; }
    [[nodiscard]] QString latestDownloadURL() const { return m_latestDownloadURL; }
    [[nodiscard]] UpdatePhase updatePhase() const { return m_updatePhase; }
    [[nodiscard]] bool isCheckingForUpdates() const { return m_isCheckingForUpdates; }

    /// Asks the update endpoint for a newer build. In silence: a failure changes nothing.
    Task<> checkForUpdates();
    /// The same for the user.
    Q_INVOKABLE void checkForUpdatesNow();
    /// Downloads the build that the last check found, puts it in the place of this one and starts
    /// it; the program ends on the way. Does nothing while that is under way.
    Q_INVOKABLE void installUpdate();
    /// The same by way of `idle`, to which nothing else ever goes back.
    Q_INVOKABLE void retryUpdate();

Q_SIGNALS:
    void languageChanged();
    void vadAutoStopChanged();
    void silenceTimeoutChanged();
    void selectedDeviceChanged();
    void translateToEnglishChanged();
    void appendModeChanged();
    void windowOpacityChanged();
    void engineTierChanged();
    void inputGainDBChanged();
    void noiseGatePercentChanged();
    void alwaysOnTopChanged();
    void agentsIncludedChanged();
    void selectedThemeChanged();
    void animationStyleChanged();
    void soundsEnabledChanged();
    void latenciesChanged();
    void activityLogChanged();
    void showActivityLogChanged();
    void errorMessageChanged();
    void showErrorChanged();
    void isAccessibilityErrorChanged();
    void compactFeedbackChanged();
    void stateChanged();
    void isRecordingChanged();
    void isTranscribingChanged();
    void draftTextChanged();
    void audioLevelChanged();
    void recordingDurationChanged();
    void attachedImagesChanged();
    void modelLoadedChanged();
    void availableDevicesChanged();
    void showHistoryChanged();
    void historyEntriesChanged();
    void showSessionPickerChanged();
    void sessionPickerSessionsChanged();
    void sessionPickerTitleChanged();
    /// After each scan, also when it found as many.
    void claudeSessionCountChanged();
    void opencodeSessionCountChanged();
    void needsOnboardingChanged();
    void onboardingCompleteChanged();
    void microphoneAuthorizedChanged();
    void accessibilityAuthorizedChanged();
    void automationAuthorizedChanged();
    void isAutomationKnownChanged();
    void activeWindowChanged();
    void isCompactModeChanged();
    void compactBarHeightsChanged();
    void compactElapsedChanged();
    void compactSmoothLevelChanged();
    void compactSessionsVisibleChanged();
    void compactScrollOffsetChanged();
    void compactSessionsChanged();
    void updateAvailableChanged();
    void latestVersionChanged();
    void latestDownloadURLChanged();
    void updatePhaseChanged();
    void isCheckingForUpdatesChanged();

private:
    // AppState_settings.cpp
    void setupSettingsObservation();

    // AppState_dictation.cpp
    void startRecordingInternal();
    void requestMicrophoneAccess();
    void captureTargetApplication();
    /// The running terminals, one a row of the terminal table, in its order.
    [[nodiscard]] std::vector<RunningApplication> runningTerminals() const;
    static Task<> recordingTick(QPointer<AppState> self, Scheduler& scheduler,
                                CancellationToken token);
    void finishTranscription(const std::optional<QString>& text, double duration);
    void acceptTranscription(const QString& text, double duration);
    void playFailureSound();

    // AppState_draft.cpp
    void appendToDraft(const QString& text);

    // AppState_delivery.cpp
    void sendToAgent(AgentType type, const QString& agentName,
                     const QString& messageWithoutSession);
    void reportFailedDelivery(const QString& description);
    /// Puts the agent's name into the newest history row, if it holds just `text`.
    void markAsSent(const QString& text, const QString& agentName);
    void demandAccessibility();
    /// The remembered application, or else a running terminal.
    [[nodiscard]] std::optional<ProcessID> focusedTerminal();
    Task<> runSendDiagnostic();

    // AppState_startup.cpp
    void checkPermissions();
    /// What the device picker offers before the devices are listed.
    [[nodiscard]] static QList<AudioInputDevice> systemDefaultOnly();
    void setupAudioObservation();
    void initializeServices();
    void cleanupOrphanedWAVFiles();
    void openHistory();
    void startAccessibilityPolling();
    void handleAccessibilityChange(bool granted);
    void loadModel();
    void notifyModelLoaded();

    // AppState_compact.cpp
    void updateCompactAnimation();

    // AppState_windows.cpp
    void guardAgainstWindows();
    void sweepWindows();

    // AppState_updates.cpp
    Task<> performUpdate(QUrl url, QString appPath);
    /// Writes the script that replaces the bundle by what the file at `imagePath` holds, and starts
    /// it. Throws.
    void launchUpdateScript(const QString& imagePath, const QString& appPath);

    template <typename Property, typename Value>
    void store(Property& property, const Value& value, const QString& key);

    const Platform m_platform;

    AgentService m_agentService;
    AudioService m_audioService;
    WhisperService m_whisperService;
    std::unique_ptr<HistoryService> m_historyService;
    SoundService& m_soundService;
    NotificationService& m_notificationService;

#define QUORVIN_FIELD(type, name, initial)                                                         \
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppState, type, m_##name, initial,                        \
                                         &AppState::name##Changed)

    const AppSettings m_storedSettings;
    QUORVIN_FIELD(QString, language, m_storedSettings.language)
    QUORVIN_FIELD(bool, vadAutoStop, m_storedSettings.vadAutoStop)
    QUORVIN_FIELD(int, silenceTimeout, m_storedSettings.silenceTimeout)
    QUORVIN_FIELD(QString, selectedDevice, m_storedSettings.selectedDevice)
    QUORVIN_FIELD(bool, translateToEnglish, m_storedSettings.translateToEnglish)
    QUORVIN_FIELD(bool, appendMode, m_storedSettings.appendMode)
    QUORVIN_FIELD(double, windowOpacity, m_storedSettings.windowOpacity)
    QUORVIN_FIELD(QString, engineTier, m_storedSettings.engineTier)
    QUORVIN_FIELD(double, inputGainDB, m_storedSettings.inputGainDB)
    QUORVIN_FIELD(double, noiseGatePercent, m_storedSettings.noiseGatePercent)
    QUORVIN_FIELD(bool, alwaysOnTop, m_storedSettings.alwaysOnTop)
    QUORVIN_FIELD(bool, agentsIncluded, m_storedSettings.agentsIncluded)
    QUORVIN_FIELD(QString, selectedTheme, m_storedSettings.selectedTheme)
    QUORVIN_FIELD(QString, animationStyle, m_storedSettings.animationStyle)
    QUORVIN_FIELD(bool, soundsEnabled, m_storedSettings.soundsEnabled)
    QUORVIN_FIELD(bool, onboardingComplete, m_storedSettings.onboardingComplete)

    QUORVIN_FIELD(QList<ActivityEntry>, activityLog, QList<ActivityEntry>())
    QUORVIN_FIELD(bool, showActivityLog, false)
    QUORVIN_FIELD(std::optional<QString>, errorMessage, std::optional<QString>())
    QUORVIN_FIELD(bool, showError, false)
    QUORVIN_FIELD(bool, isAccessibilityError, false)
    QUORVIN_FIELD(QString, compactFeedback, QString())
    CancellableTask m_compactFeedbackTask;

    QUORVIN_FIELD(AppMode, state, AppMode::idle)
    QUORVIN_FIELD(bool, isRecording, false)
    QUORVIN_FIELD(bool, isTranscribing, false)
    QUORVIN_FIELD(double, audioLevel, 0.0)
    QUORVIN_FIELD(double, recordingDuration, 0.0)
    QUORVIN_FIELD(bool, modelLoaded, false)
    QUORVIN_FIELD(QList<AudioInputDevice>, availableDevices, systemDefaultOnly())
    std::optional<ProcessID> m_lastFocusedAppPID;
    bool m_isMicPermissionPending = false;
    CancellableTask m_recordingTimer;

    QUORVIN_FIELD(QString, draftText, QString())
    QUORVIN_FIELD(QList<QUrl>, attachedImages, QList<QUrl>())

    QUORVIN_FIELD(bool, showHistory, false)
    QUORVIN_FIELD(QList<HistoryEntry>, historyEntries, QList<HistoryEntry>())

    QUORVIN_FIELD(bool, showSessionPicker, false)
    QUORVIN_FIELD(QList<AgentSessionInfo>, sessionPickerSessions, QList<AgentSessionInfo>())
    QUORVIN_FIELD(QString, sessionPickerTitle, QString())
    QString m_sessionPickerText; ///< the draft as it was when the picker opened

    QUORVIN_FIELD(bool, needsOnboarding, true)
    QUORVIN_FIELD(bool, microphoneAuthorized, false)
    QUORVIN_FIELD(bool, accessibilityAuthorized, false)
    QUORVIN_FIELD(bool, automationAuthorized, false)
    QUORVIN_FIELD(bool, isAutomationKnown, false)
    CancellableTask m_accessibilityPollTask;

    QUORVIN_FIELD(ActiveWindow, activeWindow, ActiveWindow::main)
    QUORVIN_FIELD(bool, isCompactMode, false)
    bool m_didUserTriggerWindowSwitch = false;
    std::weak_ptr<AppWindow> m_mainWindow;
    WindowSystem::Subscription m_windowGuard;

    QUORVIN_FIELD(QList<double>, compactBarHeights, QList<double>(compactBarCount, 0.03))
    QUORVIN_FIELD(double, compactElapsed, 0.0)
    QUORVIN_FIELD(double, compactSmoothLevel, 0.0)
    QUORVIN_FIELD(bool, compactSessionsVisible, false)
    QUORVIN_FIELD(int, compactScrollOffset, 0)
    QUORVIN_FIELD(QList<CompactSessionInfo>, compactSessions, QList<CompactSessionInfo>())
    QList<double> m_barPhaseOffsets; ///< filled at construction and read by nobody, as agreed
    AudioService::Bands m_compactFftBands{};
    int m_compactIdleFrameCount = 0;   ///< 0 again at each active frame, and read by nobody
    int m_compactScrollFrameCount = 0; ///< reset at each take and read by nobody, as agreed

    CancellableTask m_compactAnimationTask;
    CompactWindowController m_compactWindowController;

    QUORVIN_FIELD(bool, updateAvailable, false)
    QUORVIN_FIELD(QString, latestVersion, QString())
    QUORVIN_FIELD(QString, latestDownloadURL, QString())
    QUORVIN_FIELD(UpdatePhase, updatePhase, UpdatePhase())
    QUORVIN_FIELD(bool, isCheckingForUpdates, false)

#undef QUORVIN_FIELD

    OnboardingModel m_onboarding{*this, m_platform};
};

} // namespace quorvin
