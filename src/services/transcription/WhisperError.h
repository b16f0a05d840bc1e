#pragma once

#include <QString>

#include <exception>
#include <string>

namespace quorvin {

/// What can go wrong with the speech engine; `what` is the message.
class WhisperError : public std::exception {
public:
    enum class Case { processFailure, modelNotFound, binaryNotFound };

    /// `detail` belongs to `processFailure` alone.
    explicit WhisperError(Case errorCase, const QString& detail = {});

    [[nodiscard]] Case errorCase() const { return m_case; }
    [[nodiscard]] const char* what() const noexcept override { return m_message.c_str(); }

private:
    Case m_case;
    std::string m_message;
};

} // namespace quorvin
