#include "platform/linux/posix/TerminationSignals.h"

#include <array>
#include <atomic>
#include <csignal>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace quorvin {

namespace {

constexpr std::array terminationSignals{SIGTERM, SIGINT, SIGHUP};

/// All that a signal handler may touch: the end of a pipe to write to.
std::atomic<int> wakeDescriptor{-1};

void setHandler(int signal, void (*handler)(int), int flags) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
}

bool isIgnored(int signal) {
    struct sigaction action {};
    sigaction(signal, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> onTermination) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe2");
    }
    m_readEnd = FileDescriptor(ends[0]);
    m_writeEnd = FileDescriptor(ends[1]);
    wakeDescriptor = m_writeEnd.get();
    m_notifier.emplace(m_readEnd.get(), QSocketNotifier::Read);
    QObject::connect(&*m_notifier, &QSocketNotifier::activated, &*m_notifier,
                     [this, onTermination = std::move(onTermination)] {
                         m_notifier->setEnabled(false);
                         onTermination();
                     });
    for (const int signal : terminationSignals) {
        // nohup and its like have decided otherwise.
        if (!isIgnored(signal)) {
            setHandler(signal, &TerminationSignals::handle, SA_RESTART | SA_RESETHAND);
        }
    }
}

TerminationSignals::~TerminationSignals() {
    for (const int signal : terminationSignals) {
        if (!isIgnored(signal)) {
            setHandler(signal, SIG_DFL, 0);
        }
    }
    wakeDescriptor = -1;
}

void TerminationSignals::handle(int /*signal*/) {
    const int savedError = errno;
    const char wake = 1;
    // When the pipe is full, the main thread has been told already.
    [[maybe_unused]] const ssize_t written = write(wakeDescriptor, &wake, sizeof wake);
    errno = savedError;
}

} // namespace quorvin
