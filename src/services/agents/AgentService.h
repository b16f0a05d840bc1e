#pragma once

#include "platform/ProcessTable.h"
#include "platform/Scheduler.h"
#include "platform/TerminalAutomation.h"
#include "platform/Workspace.h"
#include "services/agents/AgentTypes.h"
#include "support/Task.h"

#include <QDateTime>
#include <QObject>
#include <QProperty>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

namespace quorvin {

class KeyEvents;
class Pasteboard;

/// Knows which coding agents run in terminals and where, and puts messages into those terminals.
/// Lives on the main thread; nothing is scanned unless somebody asks.
class AgentService : public QObject {
    Q_OBJECT
    Q_PROPERTY(
        QList<AgentSessionInfo> claudeSessions READ claudeSessions NOTIFY claudeSessionsChanged)
    Q_PROPERTY(QList<AgentSessionInfo> opencodeSessions READ opencodeSessions NOTIFY
                   opencodeSessionsChanged)
    Q_PROPERTY(bool accessibilityGranted READ accessibilityGranted WRITE setAccessibilityGranted
                   NOTIFY accessibilityGrantedChanged)
    Q_PROPERTY(bool automationGranted READ automationGranted NOTIFY automationGrantedChanged)
public:
    /// Has `work` run once on another thread, user-initiated work first.
    using Background = std::function<void(std::function<void()> work)>;

    /// By what a message reaches a terminal.
    struct Transport {
        Pasteboard& pasteboard;
        KeyEvents& keyEvents;
        TerminalAutomation& terminalAutomation;
    };

    /// How long, in seconds, a result with sessions counts as fresh.
    static constexpr double cacheValidity = 10.0;

    /// `scheduler` outlives the background work; it, `workspace` and the transport outlive the
    /// deliveries that are under way.
    AgentService(Scheduler& scheduler, Workspace& workspace, ProcessTableFactory makeProcessTable,
                 Background runInBackground, Transport transport);

    /// As the last scan found them.
    [[nodiscard]] QList<AgentSessionInfo> claudeSessions() const { return m_claudeSessions; }
    [[nodiscard]] QList<AgentSessionInfo> opencodeSessions() const { return m_opencodeSessions; }
    /// When the last scan finished.
    [[nodiscard]] std::optional<QDateTime> lastScanTime() const { return m_lastScanTime; }

    /// The system's answer when it was last asked for the permission.
    [[nodiscard]] bool accessibilityGranted() const { return m_accessibilityGranted; }
    void setAccessibilityGranted(bool granted) { m_accessibilityGranted = granted; }
    /// Deliberate: stays false; who needs the permission's state asks for it.
    [[nodiscard]] bool automationGranted() const { return m_automationGranted; }

    /// Scans unless there is a fresh result. Finding nothing is never fresh: the user is about to
    /// start an agent. Never fails.
    Task<> refreshSessions();
    /// Scans. Scans may overlap; the result of the one that finishes last stands. Never fails.
    Task<> refreshSessionsForce();

    // AgentService_delivery.cpp

    /// Puts `text`, as it is, on the pasteboard, brings the session's tab and terminal to the front
    /// and presses paste and Return. Throws AgentError when keys may not be posted, before anything
    /// else has happened; what fails later is not noticed. Deliveries may overlap, and then mix.
    Task<> sendText(QString text, AgentSessionInfo session);
    /// The same with the message that `text` and the paths of `images` make for this agent. On
    /// purpose in another order: the tab comes first, and also when no terminal is known to run.
    Task<> sendTextAndImages(QString text, QList<QUrl> images, AgentSessionInfo session);

    // AgentService_focus.cpp

    /// Whether the system lets this program control others, asked anew each time; nothing is kept.
    Task<bool> checkAutomationPermission();
    void requestAutomationPermissions();
    void openAccessibilitySettings();
    void openAutomationSettings();

Q_SIGNALS:
    /// After each scan, also when it found the same.
    void claudeSessionsChanged();
    void opencodeSessionsChanged();
    void accessibilityGrantedChanged();
    void automationGrantedChanged();

private:
    [[nodiscard]] bool isFresh() const;
    void requireAccessibility();
    [[nodiscard]] std::optional<ProcessID> terminalProcess(const AgentSessionInfo& session);
    /// Brings the session's tab to the front. May hold the main thread for as long as its terminal
    /// takes to answer.
    [[nodiscard]] Task<TabFocus> focusSession(AgentSessionInfo session);

    Scheduler& m_scheduler;
    Workspace& m_workspace;
    std::shared_ptr<const ProcessTableFactory> m_makeProcessTable; // held weakly by the scans
    Background m_runInBackground;
    Transport m_transport;

    QList<AgentSessionInfo> m_claudeSessions;
    QList<AgentSessionInfo> m_opencodeSessions;
    std::optional<QDateTime> m_lastScanTime;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AgentService, bool, m_accessibilityGranted, false,
                                         &AgentService::accessibilityGrantedChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AgentService, bool, m_automationGranted, false,
                                         &AgentService::automationGrantedChanged)
};

} // namespace quorvin
