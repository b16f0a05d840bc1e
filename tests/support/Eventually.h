#pragma once

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <functional>

namespace quorvin::testing {

/// Lets events happen until `condition` is true; false when that takes longer than ten seconds. For
/// what other processes do, never for the program's own time.
[[nodiscard]] inline bool eventually(const std::function<bool()>& condition) {
    constexpr qint64 patience = 10'000; // milliseconds
    constexpr int glance = 5;
    const QDeadlineTimer deadline(patience);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QEventLoop loop;
        QTimer::singleShot(glance, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return true;
}

} // namespace quorvin::testing
