#pragma once

#include <stdexcept>
#include <string>

namespace quorvin {

/// An operation on the history that failed. `what` is the message, in UTF-8.
class HistoryError : public std::runtime_error {
public:
    enum class Case { databaseOpenFailed, prepareFailed, execFailed, directoryCreationFailed };

    /// `detail` is the database's or the system's own words.
    HistoryError(Case errorCase, const std::string& detail)
        : std::runtime_error(introduction(errorCase) + detail), m_case(errorCase) {}

    [[nodiscard]] Case errorCase() const { return m_case; }

private:
    static std::string introduction(Case errorCase) {
        switch (errorCase) {
        case Case::databaseOpenFailed:
            return "Failed to open history database: ";
        case Case::prepareFailed:
            return "Failed to prepare SQL statement: ";
        case Case::execFailed:
            return "Failed to execute SQL: ";
        case Case::directoryCreationFailed:
            return "Failed to create data directory: ";
        }
        return {};
    }

    Case m_case;
};

} // namespace quorvin
