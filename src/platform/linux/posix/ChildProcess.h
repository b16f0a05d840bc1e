#pragma once

#include "platform/ProcessRunner.h"
#include "platform/linux/posix/FileDescriptor.h"

#include <mutex>
#include <optional>

#include <sys/types.h>

namespace quorvin {

/// One child with its standard output and error in pipes. Made on one thread, waited for on
/// another.
class ChildProcess {
public:
    /// Starts `program` (a path) at once. Throws ProcessLaunchError.
    ChildProcess(const QString& program, const QStringList& arguments);
    /// Kills and collects a child that nobody has waited for.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Blocks until the child has ended and its output and then its error output are closed. Once.
    [[nodiscard]] ProcessResult wait();

    /// Ends the child and, even if others still hold its pipes, the `wait` for it, which then gives
    /// the result of a killed child. Any thread.
    void kill();

private:
    /// Blocks until the child has ended and gives up its number.
    int collect();
    /// What comes through `pipe` until all writers have closed it; absent when `kill` cut it short.
    [[nodiscard]] std::optional<QByteArray> readToEnd(const FileDescriptor& pipe) const;

    FileDescriptor m_output;
    FileDescriptor m_error;
    FileDescriptor m_killed; // readable from the first call of `kill` on
    pid_t m_id = -1;
    std::mutex m_mutex; // guards m_isCollected and, with it, whose number m_id is
    bool m_isCollected = false;
};

} // namespace quorvin
