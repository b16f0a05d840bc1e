#include "platform/linux/posix/PosixProcessRunner.h"

#include "platform/linux/posix/ChildProcess.h"

#include <csignal>
#include <system_error>
#include <thread>

namespace quorvin {

/// A child and the thread that waits for it.
class PosixProcessRunner::Run {
public:
    Run(const QString& program, const QStringList& arguments) : m_child(program, arguments) {}
    ~Run() { end(); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    /// Calls `finished` once, on the waiting thread. Throws ProcessLaunchError when the system
    /// gives no thread.
    void wait(std::function<void(ProcessResult)> finished) {
        try {
            m_waiter =
                std::thread([this, finished = std::move(finished)] { finished(m_child.wait()); });
        } catch (const std::system_error& error) {
            throw ProcessLaunchError(error.what());
        }
    }

    /// Ends the child, if it still runs, and the thread. `finished` has been called then.
    void end() {
        m_child.kill();
        if (m_waiter.joinable()) {
            m_waiter.join();
        }
    }

private:
    ChildProcess m_child;
    std::thread m_waiter;
};

PosixProcessRunner::PosixProcessRunner(Scheduler& scheduler)
    : m_scheduler(scheduler), m_runs(std::make_shared<Runs>()) {
    // Whoever has started this program may have left the signal ignored; the system would then
    // throw the exit codes of children away.
    struct sigaction present {};
    if (::sigaction(SIGCHLD, nullptr, &present) == 0 && present.sa_handler == SIG_IGN) {
        ::signal(SIGCHLD, SIG_DFL);
    }
}

PosixProcessRunner::~PosixProcessRunner() {
    for (const auto& run : *m_runs) {
        run->end();
    }
}

Task<ProcessResult> PosixProcessRunner::run(QString program, QStringList arguments) {
    const auto run = std::make_shared<Run>(program, arguments);
    Pending<ProcessResult> pending;
    run->wait([pending, &scheduler = m_scheduler](ProcessResult result) mutable {
        scheduler.post([pending, result = std::move(result)]() mutable {
            pending.resolve(std::move(result));
        });
    });
    const auto runs = m_runs;
    runs->insert(run);
    ProcessResult result = co_await pending;
    runs->erase(run); // the runner may be gone
    co_return result;
}

} // namespace quorvin
