#pragma once

#include "support/Task.h"

#include <QDateTime>

#include <chrono>
#include <coroutine>
#include <functional>

namespace quorvin {

/// The main thread's time: everything that waits, waits here, so that a test can turn the clock.
class Scheduler {
public:
    using Duration = std::chrono::nanoseconds;

    Scheduler() = default;
    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;
    virtual ~Scheduler() = default;

    /// Runs `work` on the main thread, after the present call has given it up, in the order of
    /// posting. Any thread. What is still waiting when the scheduler goes is run by its destructor.
    virtual void post(std::function<void()> work) = 0;

    /// Runs `work` on the main thread when `delay` has passed. Main thread only. What is still
    /// waiting when the scheduler goes is run early, by its destructor: whoever waits must look
    /// whether its object still lives.
    virtual void postDelayed(Duration delay, std::function<void()> work) = 0;

    /// Time since an arbitrary moment; never goes back.
    [[nodiscard]] virtual Duration monotonicTime() const = 0;

    /// The present date, in UTC; may jump.
    [[nodiscard]] virtual QDateTime wallTime() const = 0;

    /// `co_await scheduler.sleep(33ms)` goes on when `delay` has passed. Cancelling the task does
    /// not shorten the sleep. Main thread only.
    [[nodiscard]] auto sleep(Duration delay) {
        struct Awaiter {
            Scheduler& scheduler;
            Duration delay;
            bool await_ready() const noexcept { return false; }
            void await_suspend(std::coroutine_handle<> waiter) {
                scheduler.postDelayed(delay, [waiter] { waiter.resume(); });
            }
            void await_resume() const noexcept {}
        };
        return Awaiter{*this, delay};
    }

    /// Starts a task once the present call has given up the main thread. Dropping the handle
    /// cancels it. An exception that leaves `body` is logged and ends the task.
    [[nodiscard]] CancellableTask start(std::function<Task<>(CancellationToken)> body);

    /// Calls `work` when `delay` has passed, unless the handle is dropped before.
    [[nodiscard]] CancellableTask startAfter(Duration delay, std::function<void()> work);

    /// Starts a task that nobody cancels.
    void startDetached(std::function<Task<>()> body);
};

} // namespace quorvin
