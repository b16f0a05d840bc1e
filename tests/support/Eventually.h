#pragma once

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <functional>

namespace quorvin::testing {

/// Lets events happen until `condition` is true; false when that takes longer than `patience`. For
/// what other processes do, never for the program's own time.
[[nodiscard]] inline bool
eventually(const std::function<bool()>& condition,
           std::chrono::milliseconds patience = std::chrono::seconds(20)) {
    constexpr int glance = 5; // milliseconds
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
