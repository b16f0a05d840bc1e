#include "services/agents/AgentError.h"

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace {

QString describe(AgentError::Case errorCase) {
    switch (errorCase) {
    case AgentError::Case::accessibilityRequired:
        return u"Accessibility permission required. Please grant access in System Settings → "
               "Privacy & Security → Accessibility."_s;
    case AgentError::Case::terminalNotFound:
        return u"Could not find the terminal application for this session. Make sure your terminal "
               "(iTerm, Terminal, Warp, etc.) is running."_s;
    case AgentError::Case::activationFailed:
        return u"Failed to activate the terminal application. The terminal window may have been "
               "closed."_s;
    case AgentError::Case::noClaudeSession:
        return u"No Claude Code session found. Start Claude Code in a terminal first (run 'claude' "
               "in your terminal)."_s;
    case AgentError::Case::noOpenCodeSession:
        return u"No OpenCode session found. Start OpenCode in a terminal first (run 'opencode' in "
               "your terminal)."_s;
    }
    return {};
}

} // namespace

AgentError::AgentError(Case errorCase)
    : std::runtime_error(describe(errorCase).toStdString()), m_case(errorCase) {}

QString AgentError::errorDescription() const {
    return describe(m_case);
}

} // namespace quorvin
