#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace quorvin {

using ProcessID = std::int32_t;

/// An application with windows. `bundleIdentifier` is the reverse-domain name that the terminal
/// table uses, absent for a program that has none.
struct RunningApplication {
    ProcessID processIdentifier = 0;
    std::optional<QString> localizedName;
    std::optional<QString> bundleIdentifier;
};

/// The other applications of the desktop. Main thread only. Where a system does not tell, the
/// answers are empty and the requests say so.
class Workspace {
public:
    enum class Request { made, notPossibleHere };

    Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    virtual ~Workspace() = default;

    /// The application that has the keyboard focus; absent when there is none or it isn't known.
    [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() = 0;

    /// In the system's order; one entry a process.
    [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() = 0;

    /// Asks for the application's window to be raised and focused; returns before that has
    /// happened.
    virtual Request activate(ProcessID processIdentifier) = 0;

    /// Opens a settings page or a document with what the system has for it.
    virtual Request openURL(const QString& url) = 0;

    /// The running application with this process id, if any.
    [[nodiscard]] std::optional<RunningApplication> application(ProcessID processIdentifier);
    /// The first running application with this bundle identifier, if any.
    [[nodiscard]] std::optional<RunningApplication> application(const QString& bundleIdentifier);
};

} // namespace quorvin
