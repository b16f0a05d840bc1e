#pragma once

#include <QCoroTask>

#include <coroutine>
#include <exception>
#include <functional>
#include <memory>
#include <utility>
#include <variant>

namespace quorvin {

/// A coroutine on the main thread. It starts at once when called and goes on by itself when the
/// returned object is dropped; what it throws reaches whoever awaits it.
template <typename T = void>
using Task = QCoro::Task<T>;

/// Read side of a cancellation: what a task looks at after every await.
class CancellationToken {
public:
    [[nodiscard]] bool isCancelled() const { return *m_cancelled; }

private:
    friend class CancellableTask;
    explicit CancellationToken(std::shared_ptr<const bool> cancelled)
        : m_cancelled(std::move(cancelled)) {}

    std::shared_ptr<const bool> m_cancelled;
};

/// The owner's handle of a running task. Replacing, resetting or destroying the handle cancels the
/// task: it ends at its next look at the token and has no further effect. Main thread only.
class CancellableTask {
public:
    CancellableTask() = default;
    ~CancellableTask() { cancel(); }
    CancellableTask(const CancellableTask&) = delete;
    CancellableTask& operator=(const CancellableTask&) = delete;
    CancellableTask(CancellableTask&& other) noexcept = default;
    CancellableTask& operator=(CancellableTask&& other) noexcept {
        if (this != &other) {
            cancel();
            m_cancelled = std::move(other.m_cancelled);
        }
        return *this;
    }

    [[nodiscard]] static CancellableTask create() {
        CancellableTask task;
        task.m_cancelled = std::make_shared<bool>(false);
        return task;
    }
    /// Only for a handle from `create`.
    [[nodiscard]] CancellationToken token() const { return CancellationToken(m_cancelled); }

    void cancel() {
        if (m_cancelled) {
            *m_cancelled = true;
        }
        m_cancelled.reset();
    }

private:
    std::shared_ptr<bool> m_cancelled;
};

/// A result that arrives later: one side awaits it, the other resolves or rejects it once. Copies
/// share the result. Everything happens on the main thread; a waiter is resumed inside `resolve`.
template <typename T>
class Pending {
public:
    void resolve(T value) { finish(Outcome(std::in_place_index<1>, std::move(value))); }
    void reject(std::exception_ptr error) { finish(Outcome(std::in_place_index<2>, error)); }

    auto operator co_await() const {
        struct Awaiter {
            std::shared_ptr<State> state;
            bool await_ready() const noexcept { return state->outcome.index() != 0; }
            void await_suspend(std::coroutine_handle<> waiter) noexcept { state->waiter = waiter; }
            T await_resume() {
                if (state->outcome.index() == 2) {
                    std::rethrow_exception(std::get<2>(state->outcome));
                }
                return std::move(std::get<1>(state->outcome));
            }
        };
        return Awaiter{m_state};
    }

private:
    using Outcome = std::variant<std::monostate, T, std::exception_ptr>;
    struct State {
        Outcome outcome;
        std::coroutine_handle<> waiter;
    };

    void finish(Outcome outcome) {
        const auto state = m_state; // the waiter may destroy this object
        state->outcome = std::move(outcome);
        if (state->waiter) {
            std::exchange(state->waiter, {}).resume();
        }
    }

    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace quorvin
