#pragma once

#include <QString>

#include <stdexcept>

namespace quorvin {

/// A delivery to an agent that could not be made.
class AgentError : public std::runtime_error {
public:
    enum class Case {
        accessibilityRequired,
        terminalNotFound,
        activationFailed,
        noClaudeSession,
        noOpenCodeSession,
    };

    explicit AgentError(Case errorCase);

    [[nodiscard]] Case errorCase() const { return m_case; }
    /// What the user is told; `what` is the same in UTF-8.
    [[nodiscard]] QString errorDescription() const;

private:
    Case m_case;
};

} // namespace quorvin
