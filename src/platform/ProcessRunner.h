#pragma once

#include "support/Task.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <stdexcept>
#include <string>

namespace quorvin {

/// A child process that could not be started; `what` is the system's reason.
class ProcessLaunchError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What a child left behind. `exitStatus` is its exit code, or the number of the signal that ended
/// it, or -1 when the system doesn't tell.
struct ProcessResult {
    int exitStatus = 0;
    QByteArray standardOutput;
    QByteArray standardError;
};

/// Child processes, started directly and never through a shell. They get a copy of this program's
/// environment and no open descriptor but the standard three, standard input being empty.
class ProcessRunner {
public:
    ProcessRunner() = default;
    ProcessRunner(const ProcessRunner&) = delete;
    ProcessRunner& operator=(const ProcessRunner&) = delete;
    /// Kills the children that still run; their callers get the result of a killed child.
    virtual ~ProcessRunner() = default;

    /// Starts `program` (an absolute path) and waits for its end, then reads its standard output to
    /// the end, then its standard error. Nothing drains the pipes while the child runs and there is
    /// no time limit: a child that writes more than a pipe holds (64 KiB on Linux) never ends.
    /// Throws ProcessLaunchError. Main thread; the waiting is done elsewhere.
    [[nodiscard]] virtual Task<ProcessResult> run(QString program, QStringList arguments) = 0;
};

} // namespace quorvin
