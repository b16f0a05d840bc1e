#pragma once

#include <QString>
#include <QStringList>

#include <sys/types.h>
#include <unistd.h>

namespace quorvin {

/// The lowest descriptor that is none of the standard three.
constexpr int firstOwnDescriptor = STDERR_FILENO + 1;

/// What a child has of this program besides a copy of its environment.
struct SpawnOptions {
    static constexpr int nullDevice = -1;
    enum class Session {
        inherited,
        own ///< nothing that ends this program's session or terminal reaches it
    };

    /// Descriptors for the child's standard output and error, none of them a standard one here.
    int output = nullDevice;
    int error = nullDevice;
    Session session = Session::inherited;
};

/// Starts `program` (a path) with empty input, no descriptor but the standard three, and no signal
/// blocked or ignored. The caller collects the child. Throws ProcessLaunchError. Any thread.
[[nodiscard]] pid_t spawn(const QString& program, const QStringList& arguments,
                          const SpawnOptions& options);

/// Throws ProcessLaunchError with the system's text for an errno value.
[[noreturn]] void throwLaunchError(int error);

} // namespace quorvin
