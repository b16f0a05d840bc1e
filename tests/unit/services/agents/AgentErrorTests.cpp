#include "services/agents/AgentError.h"

#include <utility>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

TEST(AgentError, TellsTheUserWhatToDo) {
    using Case = AgentError::Case;
    const std::pair<Case, QString> expected[] = {
        {Case::accessibilityRequired,
         u"Accessibility permission required. Please grant access in System Settings → Privacy & "
         "Security → Accessibility."_s},
        {Case::terminalNotFound,
         u"Could not find the terminal application for this session. Make sure your terminal "
         "(iTerm, Terminal, Warp, etc.) is running."_s},
        {Case::activationFailed,
         u"Failed to activate the terminal application. The terminal window "
         "may have been closed."_s},
        {Case::noClaudeSession, u"No Claude Code session found. Start Claude Code in a terminal "
                                "first (run 'claude' in your terminal)."_s},
        {Case::noOpenCodeSession, u"No OpenCode session found. Start OpenCode in a terminal first "
                                  "(run 'opencode' in your terminal)."_s},
    };
    for (const auto& [errorCase, text] : expected) {
        const AgentError error(errorCase);
        EXPECT_EQ(error.errorCase(), errorCase);
        EXPECT_EQ(error.errorDescription(), text);
        EXPECT_EQ(QString::fromUtf8(error.what()), text);
    }
}
