#pragma once

#include "platform/ProcessRunner.h"
#include "platform/Scheduler.h"

#include <memory>
#include <unordered_set>

namespace quorvin {

/// Children by posix_spawn, each waited for on a thread of its own, so that one that hangs holds up
/// no other. Results reach the main thread through the scheduler, which must outlive the runner;
/// those of children that the destructor kills arrive after it.
class PosixProcessRunner final : public ProcessRunner {
public:
    explicit PosixProcessRunner(Scheduler& scheduler);
    ~PosixProcessRunner() override;

    [[nodiscard]] Task<ProcessResult> run(QString program, QStringList arguments) override;

private:
    class Run;
    using Runs = std::unordered_set<std::shared_ptr<Run>>;

    Scheduler& m_scheduler;
    /// Shared with the coroutines, which may outlive the runner.
    std::shared_ptr<Runs> m_runs;
};

} // namespace quorvin
