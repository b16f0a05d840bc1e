#pragma once

#include "platform/linux/posix/FileDescriptor.h"

#include <QSocketNotifier>

#include <functional>
#include <optional>

namespace quorvin {

/// Turns the first SIGTERM, SIGINT or SIGHUP into a call on the main thread, so that the program
/// ends in order: children, temporary files and settings are seen to. A second one of the same kind
/// has its usual effect, for a program that hangs. One object a process.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> onTermination);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    static void handle(int signal);

    FileDescriptor m_readEnd;
    FileDescriptor m_writeEnd;
    std::optional<QSocketNotifier> m_notifier;
};

} // namespace quorvin
