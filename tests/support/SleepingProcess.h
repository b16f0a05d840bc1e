#pragma once

#include "platform/Workspace.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <array>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvin::testing {

/// A real child that does nothing, under a name and in a place of the test's choice. It has started
/// its program when the constructor returns, and is gone after the destructor.
class SleepingProcess {
public:
    struct Options {
        /// At most 15 bytes without a slash.
        QByteArray name = QByteArrayLiteral("sleeper");
        QByteArray workingDirectory = QByteArrayLiteral("/");
        /// With a pseudo terminal of its own, or else without any.
        bool hasTerminal = true;
        /// A terminal that it has open without belonging to it; none when empty.
        QString openTerminal = {};
    };

    explicit SleepingProcess(const Options& options) {
        const QByteArray program = m_directory.filePath(QString::fromUtf8(options.name)).toUtf8();
        const QByteArray openTerminal = options.openTerminal.toUtf8();
        std::array<int, 2> started{};
        if (symlink("/bin/sleep", program.constData()) != 0 ||
            pipe2(started.data(), O_CLOEXEC) != 0) {
            std::abort();
        }
        std::array<char, 64> ttyPath{};
        m_pid = options.hasTerminal ? forkpty(&m_master, ttyPath.data(), nullptr, nullptr) : fork();
        if (m_pid == 0) {
            const bool isSetUp =
                (options.hasTerminal || setsid() != -1) &&
                chdir(options.workingDirectory.constData()) == 0 &&
                (openTerminal.isEmpty() || open(openTerminal.constData(), O_RDWR | O_NOCTTY) != -1);
            if (isSetUp) {
                execl(program.constData(), "sleep", "1000", nullptr);
            }
            _exit(127);
        }
        close(started[1]);
        char end = 0;
        [[maybe_unused]] const auto count = read(started[0], &end, 1); // ends when exec closes it
        close(started[0]);
        if (m_master != -1) {
            fcntl(m_master, F_SETFD, FD_CLOEXEC); // no later child shall hold this terminal open
        }
        m_ttyPath = QString::fromUtf8(ttyPath.data());
    }

    ~SleepingProcess() {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
        if (m_master != -1) {
            close(m_master);
        }
    }
    SleepingProcess(const SleepingProcess&) = delete;
    SleepingProcess& operator=(const SleepingProcess&) = delete;

    [[nodiscard]] ProcessID pid() const { return m_pid; }
    /// "/dev/pts/3"; empty without a terminal of its own.
    [[nodiscard]] QString ttyPath() const { return m_ttyPath; }

    /// Ends the process and leaves it for its parent to collect, as a zombie.
    void end() const {
        kill(m_pid, SIGKILL);
        siginfo_t info{};
        waitid(P_PID, static_cast<id_t>(m_pid), &info, WEXITED | WNOWAIT);
    }

private:
    QTemporaryDir m_directory;
    pid_t m_pid = -1;
    int m_master = -1;
    QString m_ttyPath;
};

} // namespace quorvin::testing
