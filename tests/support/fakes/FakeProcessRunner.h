#pragma once

#include "platform/ProcessRunner.h"
#include "platform/Scheduler.h"

#include <deque>
#include <functional>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace quorvin::testing {

/// Children that do what a test has scripted for their program. As with real ones, a failed launch
/// throws at once and a result arrives later, through the scheduler. A program without a script
/// can't be launched.
class FakeProcessRunner final : public ProcessRunner {
public:
    struct Call {
        QString program;
        QStringList arguments;

        bool operator==(const Call&) const = default;
    };
    /// What a child does: called at its launch, may throw ProcessLaunchError.
    using Script = std::function<ProcessResult(const Call&)>;

    /// `scheduler` must outlive this object.
    explicit FakeProcessRunner(Scheduler& scheduler) : m_scheduler(scheduler) {}
    ~FakeProcessRunner() override {
        while (runningChildren() > 0) {
            finish({.exitStatus = 9, .standardOutput = {}, .standardError = {}});
        }
    }

    void script(const QString& program, Script child) {
        m_scripts[program] = std::move(child);
        m_held.erase(program);
    }
    /// Every child of `program` ends with `result`.
    void script(const QString& program, const ProcessResult& result) {
        script(program, [result](const Call&) { return result; });
    }
    void failLaunch(const QString& program, const std::string& reason) {
        script(program,
               [reason](const Call&) -> ProcessResult { throw ProcessLaunchError(reason); });
    }
    /// Children of `program` run until `finish`.
    void hold(const QString& program) { m_held.insert(program); }

    [[nodiscard]] std::size_t runningChildren() const { return m_running.size(); }
    /// Ends the held child that has run longest.
    void finish(ProcessResult result) {
        const Pending<ProcessResult> child = m_running.front();
        m_running.pop_front();
        end(child, std::move(result));
    }

    [[nodiscard]] Task<ProcessResult> run(QString program, QStringList arguments) override {
        calls.push_back({program, arguments});
        Pending<ProcessResult> child;
        if (m_held.contains(program)) {
            m_running.push_back(child);
        } else if (const auto found = m_scripts.find(program); found != m_scripts.end()) {
            end(child, found->second(calls.back()));
        } else {
            throw ProcessLaunchError("No such file or directory");
        }
        ProcessResult result = co_await child;
        co_return result;
    }

    /// Everything that was launched or should have been, in order.
    std::vector<Call> calls;

private:
    void end(const Pending<ProcessResult>& child, ProcessResult result) {
        m_scheduler.post(
            [child = child, result = std::move(result)]() mutable { child.resolve(result); });
    }

    Scheduler& m_scheduler;
    std::map<QString, Script> m_scripts;
    std::set<QString> m_held;
    std::deque<Pending<ProcessResult>> m_running;
};

} // namespace quorvin::testing
