#include "platform/linux/posix/ChildProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvin {

namespace {

constexpr int firstOwnDescriptor = STDERR_FILENO + 1;

[[noreturn]] void throwLaunchError(int error) {
    throw ProcessLaunchError(std::generic_category().message(error));
}

void check(int error) {
    if (error != 0) {
        throwLaunchError(error);
    }
}

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

/// What a child does with its descriptors before its program begins.
class FileActions {
public:
    FileActions(const FileDescriptor& output, const FileDescriptor& error) {
        check(posix_spawn_file_actions_init(&m_actions));
        check(posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0));
        check(posix_spawn_file_actions_adddup2(&m_actions, output.get(), STDOUT_FILENO));
        check(posix_spawn_file_actions_adddup2(&m_actions, error.get(), STDERR_FILENO));
        // Also those that a library has opened without O_CLOEXEC.
        check(posix_spawn_file_actions_addclosefrom_np(&m_actions, firstOwnDescriptor));
    }
    ~FileActions() { posix_spawn_file_actions_destroy(&m_actions); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

/// Signals as a fresh program expects them, whatever this one ignores or blocks.
class DefaultSignals {
public:
    DefaultSignals() {
        check(posix_spawnattr_init(&m_attributes));
        sigset_t signals;
        sigemptyset(&signals);
        check(posix_spawnattr_setsigmask(&m_attributes, &signals));
        sigfillset(&signals);
        check(posix_spawnattr_setsigdefault(&m_attributes, &signals));
        check(posix_spawnattr_setflags(&m_attributes,
                                       POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF));
    }
    ~DefaultSignals() { posix_spawnattr_destroy(&m_attributes); }
    DefaultSignals(const DefaultSignals&) = delete;
    DefaultSignals& operator=(const DefaultSignals&) = delete;

    [[nodiscard]] const posix_spawnattr_t* get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes{};
};

/// An argument vector as exec wants it.
class ArgumentVector {
public:
    ArgumentVector(const QString& program, const QStringList& arguments) {
        m_bytes.push_back(program.toUtf8());
        for (const QString& argument : arguments) {
            m_bytes.push_back(argument.toUtf8());
        }
        for (QByteArray& bytes : m_bytes) {
            m_pointers.push_back(bytes.data());
        }
        m_pointers.push_back(nullptr);
    }

    [[nodiscard]] const char* program() const { return m_pointers.front(); }
    [[nodiscard]] char* const* get() const { return m_pointers.data(); }

private:
    std::vector<QByteArray> m_bytes;
    std::vector<char*> m_pointers;
};

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
    const FileActions actions(output.writeEnd, error.writeEnd);
    const DefaultSignals attributes;
    const ArgumentVector argv(program, arguments);
    check(
        ::posix_spawn(&m_id, argv.program(), actions.get(), attributes.get(), argv.get(), environ));
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
