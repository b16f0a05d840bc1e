#include "platform/KeyEvents.h"
#include "platform/Pasteboard.h"
#include "services/agents/AgentError.h"
#include "services/agents/AgentMessage.h"
#include "services/agents/AgentService.h"
#include "services/agents/KeystrokeInjector.h"

#include <QPointer>

namespace quorvin {

Task<> AgentService::sendText(QString text, AgentSessionInfo session) {
    requireAccessibility();
    m_transport.pasteboard.clearContents();
    m_transport.pasteboard.setString(text);
    std::optional<ProcessID> terminal = terminalProcess(session);
    const QPointer<AgentService> self(this);
    if (terminal) {
        const TabFocus focus = co_await focusSession(session);
        terminal = focus.terminal ? focus.terminal : terminal;
    }
    if (self) {
        co_await KeystrokeInjector::pasteAndSubmit(m_scheduler, m_workspace, m_transport.keyEvents,
                                                   this, terminal, true);
    }
}

Task<> AgentService::sendTextAndImages(QString text, QList<QUrl> images, AgentSessionInfo session) {
    requireAccessibility();
    const QPointer<AgentService> self(this);
    const TabFocus focus = co_await focusSession(session);
    if (!self) {
        co_return;
    }
    const auto terminal = focus.terminal ? focus.terminal : terminalProcess(session);
    const QString message = AgentMessage::compose(session.type, text, images);
    m_transport.pasteboard.clearContents();
    m_transport.pasteboard.setString(message);
    co_await KeystrokeInjector::pasteAndSubmit(m_scheduler, m_workspace, m_transport.keyEvents,
                                               this, terminal, true);
}

void AgentService::requireAccessibility() {
    m_accessibilityGranted = m_transport.keyEvents.isTrusted();
    if (!m_accessibilityGranted) {
        throw AgentError(AgentError::Case::accessibilityRequired);
    }
}

std::optional<ProcessID> AgentService::terminalProcess(const AgentSessionInfo& session) {
    if (!session.terminalBundleID) {
        return std::nullopt;
    }
    const auto application = m_workspace.application(*session.terminalBundleID);
    return application ? std::optional(application->processIdentifier) : std::nullopt;
}

} // namespace quorvin
