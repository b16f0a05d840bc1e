#pragma once

#include "platform/Workspace.h"

#include <QString>

#include <array>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvin::testing {

/// A child that has its own pseudo terminals, as in a container, and holds the one open that is
/// called like `ttyPath` outside. Making it takes rights that a test program seldom has.
class ContainedProcess {
public:
    explicit ContainedProcess(const QString& ttyPath) {
        const QByteArray wanted = ttyPath.toUtf8();
        std::array<int, 2> ready{};
        if (pipe2(ready.data(), O_CLOEXEC) != 0) {
            std::abort();
        }
        m_pid = fork();
        if (m_pid == 0) {
            if (isContained() && holds(wanted)) {
                [[maybe_unused]] const auto count = write(ready[1], "1", 1);
                close(ready[1]);
                pause();
            }
            _exit(1);
        }
        close(ready[1]);
        char answer = 0;
        m_isRunning = read(ready[0], &answer, 1) == 1;
        close(ready[0]);
    }

    ~ContainedProcess() {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }
    ContainedProcess(const ContainedProcess&) = delete;
    ContainedProcess& operator=(const ContainedProcess&) = delete;

    [[nodiscard]] bool isRunning() const { return m_isRunning; }
    [[nodiscard]] ProcessID pid() const { return m_pid; }

private:
    static bool isContained() {
        return unshare(CLONE_NEWNS) == 0 &&
               mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
               mount("devpts", "/dev/pts", "devpts", 0, "newinstance,ptmxmode=666") == 0;
    }

    /// Terminals are numbered from 0, and each lives for as long as its other end is open.
    static bool holds(const QByteArray& wanted) {
        constexpr int attempts = 200;
        for (int i = 0; i < attempts; ++i) {
            std::array<char, 64> name{};
            const int master = open("/dev/pts/ptmx", O_RDWR | O_NOCTTY);
            if (master == -1 || unlockpt(master) != 0 ||
                ptsname_r(master, name.data(), name.size()) != 0) {
                return false;
            }
            if (wanted == name.data()) {
                return open(name.data(), O_RDWR | O_NOCTTY) != -1;
            }
        }
        return false;
    }

    pid_t m_pid = -1;
    bool m_isRunning = false;
};

} // namespace quorvin::testing
