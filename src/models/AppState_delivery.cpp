#include "models/AppState.h"
#include "platform/ApplicationBundle.h"
#include "platform/KeyEvents.h"
#include "platform/Pasteboard.h"
#include "platform/Scheduler.h"
#include "platform/Workspace.h"
#include "services/agents/AgentError.h"
#include "services/agents/AgentMessage.h"
#include "services/agents/KeystrokeInjector.h"
#include "support/Text.h"

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace quorvin {

namespace {

constexpr double shortFeedback = 1.5; // seconds
constexpr double warningFeedback = 4.0;
constexpr qsizetype loggedCharacters = 40;

const QString orchestratorText =
    u"[ORCHESTRATOR CONTEXT] You are Claude Opus — the ORCHESTRATOR. You have subagents (Claude "
    u"Sonnet 4.6+) that do ALL execution work. NEVER write code yourself. Delegate to CoderAgent, "
    u"BuildAgent, TestEngineer, etc. Read → Plan → Delegate → Review. Save Opus tokens.\n"_s;

const QString diagnosticToken = u"TEST_QUORVIN"_s;

/// What the focused terminal gets: the text, then the paths of the images.
QString focusedTerminalPayload(const QString& text, const QList<QUrl>& images) {
    QString payload = text;
    if (!images.isEmpty()) {
        payload += u"\n\n### Images Attached:\n"_s;
        for (const QUrl& image : images) {
            payload += AgentMessage::pathLine(image);
        }
    }
    return payload;
}

} // namespace

// --- To an agent ---------------------------------------------------------------------------------

void AppState::sendToClaude() {
    sendToAgent(AgentType::claude, u"Claude"_s,
                u"No Claude Code session found. Start Claude Code in a terminal first."_s);
}

void AppState::sendToOpenCode() {
    sendToAgent(AgentType::opencode, u"OpenCode"_s,
                u"No OpenCode session found. Start OpenCode in a terminal first."_s);
}

void AppState::sendToAgent(AgentType type, const QString& agentName,
                           const QString& messageWithoutSession) {
    if (draftText().isEmpty() && attachedImages().isEmpty()) {
        return;
    }
    m_platform.scheduler.startDetached(
        [self = QPointer(this), type, agentName, messageWithoutSession]() -> Task<> {
            if (!self) {
                co_return;
            }
            co_await self->m_agentService.refreshSessionsForce();
            if (!self) {
                co_return;
            }
            const QList<AgentSessionInfo> sessions = type == AgentType::claude
                                                         ? self->m_agentService.claudeSessions()
                                                         : self->m_agentService.opencodeSessions();
            if (sessions.isEmpty()) {
                self->showError(messageWithoutSession);
            } else if (sessions.size() == 1) {
                co_await self->sendToSession(sessions.first(), agentName);
            } else {
                self->m_sessionPickerSessions = sessions;
                self->m_sessionPickerTitle = agentName;
                self->m_sessionPickerText = self->draftText();
                self->m_showSessionPicker = true;
            }
        });
}

void AppState::sendToPickedSession(const AgentSessionInfo& session) {
    const QString agentName = sessionPickerTitle();
    m_showSessionPicker = false;
    m_platform.scheduler.startDetached([self = QPointer(this), session, agentName]() -> Task<> {
        if (self) {
            co_await self->sendToSession(session, agentName);
        }
    });
}

Task<> AppState::sendToSession(AgentSessionInfo session, QString agentName) {
    const QString text = draftText().isEmpty() ? m_sessionPickerText : draftText();
    // Emptied before the delivery and not put back when it fails, on purpose.
    m_sessionPickerText.clear();
    m_draftText = QString();
    const QList<QUrl> images = attachedImages();
    m_attachedImages = QList<QUrl>();
    if (text.isEmpty() && images.isEmpty()) {
        co_return;
    }
    const QString message = agentsIncluded() && !text.isEmpty() ? orchestratorText + text : text;
    log(ActivityType::sending,
        u"Sending to %1... ("_s.arg(agentName) + text::elided(text, loggedCharacters) + u')');
    const QPointer self(this);
    std::optional<QString> failure;
    try {
        if (images.isEmpty()) {
            co_await m_agentService.sendText(message, session);
        } else {
            log(ActivityType::attach, u"%1 image(s) attached"_s.arg(images.size()));
            co_await m_agentService.sendTextAndImages(message, images, session);
        }
    } catch (const AgentError& error) {
        failure = QString::fromUtf8(error.what());
    }
    if (!self) {
        co_return;
    }
    if (failure) {
        reportFailedDelivery(*failure);
        co_return;
    }
    markAsSent(text, agentName);
    log(ActivityType::success, u"Sent to %1 successfully"_s.arg(agentName));
    m_notificationService.notifySendSuccess(agentName);
    m_sessionPickerText.clear();
}

void AppState::reportFailedDelivery(const QString& description) {
    log(ActivityType::error, u"Send failed: "_s + description);
    playFailureSound();
    m_notificationService.send(u"error"_s, u"Send Failed"_s, description, u"transfer.error"_s,
                               NotificationSound::critical);
    showError(description);
}

void AppState::markAsSent(const QString& text, const QString& agentName) {
    if (!m_historyService) {
        return;
    }
    try {
        const QList<HistoryEntry> newest = m_historyService->recentEntries(1);
        // A text that was edited since leaves no trace in the history.
        if (newest.isEmpty() || newest.first().text != text) {
            return;
        }
        try {
            m_historyService->deleteEntry(newest.first().id);
        } catch (const HistoryError&) {
            // The row that follows is worth more than the one that stays.
        }
        // The take's own duration is lost, on purpose.
        m_historyService->add(text, language(), 0.0, agentName);
    } catch (const HistoryError&) {
        // The text has reached the agent; its row in the history is a convenience.
        return;
    }
}

// --- To the terminal that was in front -----------------------------------------------------------

bool AppState::testAccessibility() {
    const bool trusted = m_platform.keyEvents.isTrusted();
    m_agentService.setAccessibilityGranted(trusted);
    return trusted;
}

void AppState::demandAccessibility() {
    showCompactFeedback(u"⚠ Accessibility — re-grant!"_s, warningFeedback);
    m_notificationService.send(u"error"_s, u"Accessibility Required"_s,
                               u"Open System Settings → Privacy → Accessibility, remove Quorvin "
                               u"and add it back."_s,
                               u"transfer.error"_s, NotificationSound::critical);
    m_agentService.openAccessibilitySettings();
}

void AppState::compactSendCommand() {
    if (draftText().isEmpty() && attachedImages().isEmpty()) {
        showCompactFeedback(u"nothing to send"_s, shortFeedback);
        return;
    }
    if (!testAccessibility()) {
        demandAccessibility();
        return;
    }
    autoSendToFocusedTerminal();
}

void AppState::autoSendToFocusedTerminal() {
    if (draftText().isEmpty() && attachedImages().isEmpty()) {
        return;
    }
    if (!testAccessibility()) {
        log(ActivityType::error, u"Accessibility permission required — opening System Settings"_s);
        demandAccessibility();
        return;
    }
    const auto target = focusedTerminal();
    if (!target) {
        log(ActivityType::error, u"Auto-send skipped: no terminal running"_s);
        showCompactFeedback(u"→ no terminal found"_s, shortFeedback);
        return;
    }
    const QString payload = focusedTerminalPayload(draftText(), attachedImages());
    m_draftText = QString();
    m_attachedImages = QList<QUrl>();
    const auto application = m_platform.workspace.application(*target);
    const QString name =
        application ? application->localizedName.value_or(u"unknown"_s) : u"unknown"_s;
    log(ActivityType::sending, u"Sending to %1 (pid=%2)"_s.arg(name).arg(*target));
    m_platform.pasteboard.clearContents();
    m_platform.pasteboard.setString(payload);
    m_platform.scheduler.startDetached([self = QPointer(this), platform = m_platform,
                                        target = *target, name]() -> Task<> {
        co_await KeystrokeInjector::pasteAndSubmit(platform.scheduler, platform.workspace,
                                                   platform.keyEvents, self.get(), target, false);
        if (self) {
            // The keys were posted; what became of them nobody can tell.
            self->log(ActivityType::success, u"Auto-sent to %1 (pid=%2)"_s.arg(name).arg(target));
            self->showCompactFeedback(u"✓ sent"_s, shortFeedback);
        }
    });
}

std::optional<ProcessID> AppState::focusedTerminal() {
    const ProcessID own = m_platform.applicationBundle.processIdentifier();
    if (m_lastFocusedAppPID && *m_lastFocusedAppPID != own) {
        return m_lastFocusedAppPID;
    }
    const auto terminals = runningTerminals();
    if (terminals.empty()) {
        return std::nullopt;
    }
    const RunningApplication& first = terminals.front();
    log(ActivityType::info, u"Auto-send: no PID captured, falling back to %1 pid=%2"_s
                                .arg(first.localizedName.value_or(u"terminal"_s))
                                .arg(first.processIdentifier));
    return first.processIdentifier;
}

void AppState::testSendDiagnostic() {
    m_platform.scheduler.startDetached([self = QPointer(this)]() -> Task<> {
        if (self) {
            co_await self->runSendDiagnostic();
        }
    });
}

Task<> AppState::runSendDiagnostic() {
    log(ActivityType::info, u"=== Send Diagnostic ==="_s);
    if (!testAccessibility()) {
        log(ActivityType::error, u"Accessibility: DENIED ✗ — grant in System Settings → Privacy → "
                                 u"Accessibility"_s);
        co_return;
    }
    log(ActivityType::info, u"Accessibility: GRANTED ✓"_s);
    if (!m_lastFocusedAppPID) {
        log(ActivityType::error,
            u"Target PID: nil — was a terminal frontmost when recording started?"_s);
        co_return;
    }
    const ProcessID target = *m_lastFocusedAppPID;
    if (target == m_platform.applicationBundle.processIdentifier()) {
        log(ActivityType::error,
            u"Target PID = own PID (%1) — Quorvin was frontmost. Can't self-send."_s.arg(target));
        co_return;
    }
    const auto application = m_platform.workspace.application(target);
    const auto unknown = u"unknown"_s;
    const QString name = application ? application->localizedName.value_or(unknown) : unknown;
    const QString identifier =
        application ? application->bundleIdentifier.value_or(unknown) : unknown;
    log(ActivityType::info, u"Target PID: %1 — '%2' [%3]"_s.arg(target).arg(name, identifier));
    if (!application) {
        log(ActivityType::error,
            u"Target PID %1 is no longer running — reopen terminal and record again"_s.arg(target));
        co_return;
    }
    log(ActivityType::sending,
        u"Sending %1 to %2 (pid=%3)..."_s.arg(diagnosticToken, name).arg(target));
    m_platform.pasteboard.clearContents();
    m_platform.pasteboard.setString(diagnosticToken);

    const QPointer self(this);
    const Platform platform = m_platform;
    const auto post = [&platform, target](VirtualKey key, KeyEvent::Direction direction) {
        const auto modifiers = key == VirtualKey::v ? KeyModifiers::command : KeyModifiers::none;
        return platform.keyEvents.post({key, direction, modifiers}, target);
    };
    const auto press = [&](VirtualKey key) -> Task<> {
        if (!self) {
            co_return;
        }
        co_await post(key, KeyEvent::Direction::down);
        co_await platform.scheduler.sleep(50ms);
        if (self) {
            co_await post(key, KeyEvent::Direction::up);
        }
    };
    co_await platform.scheduler.sleep(200ms);
    co_await press(VirtualKey::v);
    co_await platform.scheduler.sleep(500ms);
    co_await press(VirtualKey::returnKey);
    if (self) {
        log(ActivityType::success,
            u"Diagnostic sent. Check '%1' — '%2' should have appeared and been submitted."_s.arg(
                name, diagnosticToken));
    }
}

// --- To a row of the compact list ----------------------------------------------------------------

void AppState::sendToCompactSession(int index) {
    if (index < 0 || index >= m_compactSessions.value().size() || draftText().isEmpty()) {
        return;
    }
    const AgentSessionInfo session = m_compactSessions.value().at(index).sessionInfo;
    m_compactSessionsVisible = false;
    m_platform.scheduler.startDetached(
        [self = QPointer(this), session, text = draftText()]() -> Task<> {
            if (!self) {
                co_return;
            }
            std::optional<QString> failure;
            try {
                co_await self->m_agentService.sendText(text, session);
            } catch (const AgentError& error) {
                failure = QString::fromUtf8(error.what());
            }
            if (!self) {
                co_return;
            }
            if (failure) {
                self->showError(*failure);
                co_return;
            }
            self->m_draftText = QString();
            self->m_attachedImages = QList<QUrl>(); // never sent, and dropped on purpose
        });
}

void AppState::refreshSessions() {
    m_platform.scheduler.startDetached([self = QPointer(this)]() -> Task<> {
        if (self) {
            co_await self->m_agentService.refreshSessions();
        }
    });
}

} // namespace quorvin
