#include "platform/Scheduler.h"

#include <QLoggingCategory>

namespace quorvin {

namespace {

/// Owns `body` until its coroutine has ended: the captures of a coroutine lambda live in the
/// lambda, not in the coroutine.
Task<> run(std::function<Task<>()> body) {
    try {
        co_await body();
    } catch (const std::exception& error) {
        qCritical("A task ended with an exception: %s", error.what());
    }
}

} // namespace

CancellableTask Scheduler::start(std::function<Task<>(CancellationToken)> body) {
    CancellableTask handle = CancellableTask::create();
    post([body = std::move(body), token = handle.token()]() mutable {
        if (!token.isCancelled()) {
            run([body = std::move(body), token] { return body(token); });
        }
    });
    return handle;
}

CancellableTask Scheduler::startAfter(Duration delay, std::function<void()> work) {
    return start([this, delay, work = std::move(work)](CancellationToken token) -> Task<> {
        co_await sleep(delay);
        if (!token.isCancelled()) {
            work();
        }
    });
}

void Scheduler::startDetached(std::function<Task<>()> body) {
    post([body = std::move(body)]() mutable { run(std::move(body)); });
}

} // namespace quorvin
