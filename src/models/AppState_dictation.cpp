#include "models/AppState.h"
#include "models/Hallucinations.h"
#include "models/SilenceCounter.h"
#include "platform/ApplicationBundle.h"
#include "platform/AudioHost.h"
#include "platform/Scheduler.h"
#include "platform/Workspace.h"
#include "services/agents/TerminalApp.h"
#include "services/records/PerformanceMetrics.h"
#include "support/Text.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace quorvin {

namespace {

constexpr auto tickPeriod = 33ms;
constexpr double failureVolume = 0.3;
constexpr qsizetype loggedCharacters = 60;
constexpr double feedbackSeconds = 1.5;

} // namespace

void AppState::startRecording() {
    if (isRecording()) {
        return;
    }
    switch (m_platform.audioHost.authorizationStatus()) {
    case MicrophoneAuthorization::authorized:
        startRecordingInternal();
        break;
    case MicrophoneAuthorization::denied:
    case MicrophoneAuthorization::restricted:
        m_notificationService.send(u"error"_s, u"Microphone Access Required"_s,
                                   u"Please grant microphone access in System Settings → Privacy & "
                                   u"Security → Microphone"_s,
                                   u"transfer.error"_s, NotificationSound::critical);
        openMicrophoneSettings();
        break;
    case MicrophoneAuthorization::notDetermined:
        requestMicrophoneAccess();
        break;
    }
}

void AppState::requestMicrophoneAccess() {
    if (m_isMicPermissionPending) {
        return;
    }
    m_isMicPermissionPending = true;
    m_platform.scheduler.startDetached(
        [self = QPointer(this), &host = m_platform.audioHost]() -> Task<> {
            const bool granted = co_await host.requestAccess();
            if (!self) {
                co_return;
            }
            self->m_microphoneAuthorized = granted;
            self->m_audioService.setPermissionGranted(granted);
            self->m_isMicPermissionPending = false;
            if (granted) {
                self->startRecordingInternal();
            }
        });
}

void AppState::startRecordingInternal() {
    if (isRecording()) {
        return;
    }
    m_isRecording = true;
    m_state = AppMode::recording;
    m_recordingDuration = 0.0;
    m_compactScrollFrameCount = 0;
    m_compactSmoothLevel = 0.0;
    m_compactBarHeights = QList<double>(m_compactBarHeights.value().size(), 0.0);
    captureTargetApplication();
    log(ActivityType::recording, u"Recording started"_s);
    m_compactSessionsVisible = false;

    const std::vector<float> warm = m_audioService.drainWarmBuffer();
    m_audioService.stopKeepWarm();
    try {
        m_audioService.startRecording();
    } catch (const AudioError& error) {
        // Nothing goes to the activity log here, on purpose: "Recording started" stands alone.
        m_notificationService.send(u"error"_s, u"Recording Failed"_s,
                                   QString::fromUtf8(error.what()), u"transfer.error"_s,
                                   NotificationSound::critical);
        playFailureSound();
        m_isRecording = false;
        m_state = AppMode::idle;
        if (m_audioService.permissionGranted()) {
            m_audioService.startKeepWarm();
        }
        return;
    }
    if (!warm.empty()) {
        m_audioService.prependSamples(warm);
    }
    m_notificationService.send(u"recording-start"_s, u"Recording Started"_s, u"Speak now..."_s,
                               u"device"_s, NotificationSound::standard);
    m_soundService.play(m_soundService.uiSoundPlayer.get());
    m_recordingTimer = m_platform.scheduler.start(
        [self = QPointer(this), &scheduler = m_platform.scheduler](CancellationToken token) {
            return recordingTick(self, scheduler, token);
        });
}

void AppState::captureTargetApplication() {
    const ProcessID own = m_platform.applicationBundle.processIdentifier();
    const auto frontmost = m_platform.workspace.frontmostApplication();
    if (frontmost && frontmost->processIdentifier != own) {
        m_lastFocusedAppPID = frontmost->processIdentifier;
    }
    if (!m_lastFocusedAppPID) {
        const auto terminals = runningTerminals();
        if (!terminals.empty()) {
            m_lastFocusedAppPID = terminals.front().processIdentifier;
        }
    }
}

std::vector<RunningApplication> AppState::runningTerminals() const {
    std::vector<RunningApplication> terminals;
    for (const TerminalApp& row : terminalApps) {
        if (auto application = m_platform.workspace.application(row.bundleID.toString())) {
            terminals.push_back(std::move(*application));
        }
    }
    return terminals;
}

Task<> AppState::recordingTick(QPointer<AppState> self, Scheduler& scheduler,
                               CancellationToken token) {
    SilenceCounter silence;
    while (!token.isCancelled() && self && self->isRecording()) {
        co_await scheduler.sleep(tickPeriod);
        if (token.isCancelled() || !self) {
            co_return;
        }
        // Counted, not read from a clock: late ticks make the duration run short, on purpose.
        self->m_recordingDuration = self->recordingDuration() + SilenceCounter::tickSeconds;
        if (self->vadAutoStop() &&
            silence.tick(self->audioLevel(), self->recordingDuration(), self->silenceTimeout())) {
            self->log(ActivityType::recording,
                      u"VAD auto-stop: %1s silence"_s.arg(self->silenceTimeout()));
            self->stopRecording();
            co_return;
        }
    }
}

void AppState::stopRecording() {
    if (!isRecording()) {
        return;
    }
    log(ActivityType::recording, u"Recording stopped (%1s)"_s.arg(recordingDuration(), 0, 'f', 1));
    m_soundService.play(m_soundService.popPlayer.get());
    m_isRecording = false;
    m_isTranscribing = true;
    m_state = AppMode::transcribing;
    log(ActivityType::transcribing, u"Transcribing audio..."_s);
    m_recordingTimer.cancel();
    m_compactSessionsVisible = false;
    std::vector<float> samples = m_audioService.stopRecording();
    m_notificationService.send(u"recording-stop"_s, u"Recording Stopped"_s,
                               u"Processing audio..."_s, u"device"_s, NotificationSound::standard);
    m_platform.scheduler.startDetached([self = QPointer(this), samples = std::move(samples),
                                        duration = recordingDuration()]() mutable -> Task<> {
        if (!self) {
            co_return;
        }
        const auto transcribe = [&service = self->m_whisperService, &samples] {
            return service.transcribe(std::move(samples));
        };
        const auto text = co_await PerformanceMetrics::shared().measure(
            PerformanceMetrics::Kind::transcription, transcribe);
        if (self) {
            self->finishTranscription(text, duration);
        }
    });
}

void AppState::finishTranscription(const std::optional<QString>& text, double duration) {
    if (text && !text->isEmpty() && !isWhisperHallucination(*text)) {
        acceptTranscription(*text, duration);
    }
    // Also when a new take runs by now: nothing keeps takes and transcriptions apart, on purpose.
    m_isTranscribing = false;
    m_state = AppMode::ready;
    if (m_audioService.permissionGranted()) {
        m_audioService.startKeepWarm();
    }
    // The test is on the draft and not on this take, on purpose: a silent take sends what was left.
    if (isCompactMode() && !draftText().isEmpty()) {
        autoSendToFocusedTerminal();
    }
}

void AppState::acceptTranscription(const QString& text, double duration) {
    if (appendMode() && !draftText().isEmpty()) {
        m_draftText = draftText() + u' ' + text;
    } else {
        m_draftText = text;
    }
    log(ActivityType::success, u"Transcribed: "_s + text::elided(text, loggedCharacters) +
                                   u" (%1 chars)"_s.arg(text::characterCount(text)));
    m_soundService.play(m_soundService.vinylStopPlayer.get());
    m_notificationService.notifyTranscriptionComplete(text);
    if (m_historyService) {
        try {
            m_historyService->add(text, language(), duration, QString());
        } catch (const HistoryError&) {
            // The text is in the draft; a history that can't be written is no reason to disturb.
        }
    }
}

void AppState::toggleRecording() {
    if (isRecording()) {
        stopRecording();
    } else {
        startRecording();
    }
}

void AppState::cancelRecording() {
    if (!isRecording()) {
        return;
    }
    log(ActivityType::recording, u"Recording cancelled — discarded"_s);
    m_soundService.play(m_soundService.popPlayer.get());
    m_isRecording = false;
    m_isTranscribing = false;
    m_state = AppMode::ready;
    m_recordingTimer.cancel();
    static_cast<void>(m_audioService.stopRecording());
    showCompactFeedback(u"✕ Cancelled"_s, feedbackSeconds);
    if (m_audioService.permissionGranted()) {
        m_audioService.startKeepWarm();
    }
}

void AppState::playFailureSound() {
    // The volume stays, on purpose: pops after a failure are louder than before it.
    if (m_soundService.isEnabled && m_soundService.popPlayer) {
        m_soundService.popPlayer->setVolume(failureVolume);
    }
    m_soundService.play(m_soundService.popPlayer.get());
}

} // namespace quorvin
