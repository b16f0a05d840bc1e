#include "services/agents/AgentService.h"

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

Task<TabFocus> AgentService::focusSession(AgentSessionInfo session) {
    if (!session.terminalBundleID || !session.tty || session.tty->isEmpty()) {
        co_return TabFocus{};
    }
    co_return co_await m_transport.terminalAutomation.focusTab(*session.terminalBundleID,
                                                               *session.tty);
}

Task<bool> AgentService::checkAutomationPermission() {
    return m_transport.terminalAutomation.checkPermission();
}

void AgentService::requestAutomationPermissions() {
    m_transport.terminalAutomation.requestPermissions();
}

void AgentService::openAccessibilitySettings() {
    m_workspace.openURL(
        u"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"_s);
}

void AgentService::openAutomationSettings() {
    m_workspace.openURL(
        u"x-apple.systempreferences:com.apple.preference.security?Privacy_Automation"_s);
}

} // namespace quorvin
