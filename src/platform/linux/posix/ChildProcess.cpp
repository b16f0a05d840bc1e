#include "platform/linux/posix/ChildProcess.h"

#include "platform/linux/posix/Spawn.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvin {

namespace {

/// Owns what a system call has answered: a descriptor, or -1 for the error in errno.
FileDescriptor opened(int descriptor) {
    if (descriptor == -1) {
        throwLaunchError(errno);
    }
    return FileDescriptor(descriptor);
}

/// Out of the way of the child's standard three, in case this program was started without its own.
FileDescriptor aboveStandard(FileDescriptor descriptor) {
    return descriptor.get() >= firstOwnDescriptor
               ? std::move(descriptor)
               : opened(::fcntl(descriptor.get(), F_DUPFD_CLOEXEC, firstOwnDescriptor));
}

struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

Pipe makePipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) == -1) {
        throwLaunchError(errno);
    }
    FileDescriptor readEnd(ends[0]);
    FileDescriptor writeEnd(ends[1]);
    return {aboveStandard(std::move(readEnd)), aboveStandard(std::move(writeEnd))};
}

/// The exit code of a child or the number of the signal that ended it; -1 when something else in
/// this program has collected it.
int waitForEnd(pid_t id, int options) {
    siginfo_t end{};
    int answer = 0;
    do {
        answer = ::waitid(P_PID, static_cast<id_t>(id), &end, WEXITED | options);
    } while (answer == -1 && errno == EINTR);
    return answer == -1 ? -1 : end.si_status;
}

} // namespace

ChildProcess::ChildProcess(const QString& program, const QStringList& arguments)
    : m_killed(aboveStandard(opened(::eventfd(0, EFD_CLOEXEC)))) {
    Pipe output = makePipe();
    Pipe error = makePipe();
    m_id =
        spawn(program, arguments, {.output = output.writeEnd.get(), .error = error.writeEnd.get()});
    m_output = std::move(output.readEnd);
    m_error = std::move(error.readEnd);
}

ChildProcess::~ChildProcess() {
    if (!m_isCollected) {
        kill();
        collect();
    }
}

ProcessResult ChildProcess::wait() {
    const int exitStatus = collect();
    std::optional<QByteArray> output = readToEnd(m_output);
    std::optional<QByteArray> error = readToEnd(m_error);
    if (!output || !error) {
        return {.exitStatus = SIGKILL, .standardOutput = {}, .standardError = {}};
    }
    return {.exitStatus = exitStatus,
            .standardOutput = *std::move(output),
            .standardError = *std::move(error)};
}

void ChildProcess::kill() {
    const std::lock_guard lock(m_mutex);
    if (!m_isCollected) {
        ::kill(m_id, SIGKILL);
    }
    const std::uint64_t once = 1;
    [[maybe_unused]] const ssize_t written = ::write(m_killed.get(), &once, sizeof once);
}

int ChildProcess::collect() {
    // First leaves the dead child in place: its number can't pass to another process until the lock
    // tells that nobody will kill it any more.
    (void)waitForEnd(m_id, WNOWAIT);
    const std::lock_guard lock(m_mutex);
    m_isCollected = true;
    return waitForEnd(m_id, 0);
}

std::optional<QByteArray> ChildProcess::readToEnd(const FileDescriptor& pipe) const {
    QByteArray bytes;
    std::array<char, 65536> buffer{};
    for (;;) {
        std::array<pollfd, 2> waitedFor{pollfd{pipe.get(), POLLIN, 0},
                                        pollfd{m_killed.get(), POLLIN, 0}};
        if (::poll(waitedFor.data(), waitedFor.size(), -1) == -1) {
            continue; // interrupted
        }
        if (waitedFor[1].revents != 0) {
            return std::nullopt;
        }
        const ssize_t count = ::read(pipe.get(), buffer.data(), buffer.size());
        if (count > 0) {
            bytes.append(buffer.data(), count);
        } else if (count == 0 || errno != EINTR) {
            return bytes;
        }
    }
}

} // namespace quorvin
