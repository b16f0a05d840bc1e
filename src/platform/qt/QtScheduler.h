#pragma once

#include "platform/Scheduler.h"

#include <QObject>

#include <deque>
#include <mutex>
#include <unordered_set>

namespace quorvin {

/// The scheduler of the running program, on the event loop of the thread that made it. Delays are
/// kept to a millisecond.
class QtScheduler final : public QObject, public Scheduler {
    Q_OBJECT
public:
    QtScheduler() = default;
    ~QtScheduler() override;

    void post(std::function<void()> work) override;
    void postDelayed(Duration delay, std::function<void()> work) override;
    [[nodiscard]] Duration monotonicTime() const override;
    [[nodiscard]] QDateTime wallTime() const override;

protected:
    bool event(QEvent* event) override;

private:
    class Sleeper;

    /// Runs what is posted now; false when there was nothing.
    bool runPosted();
    void wake(Sleeper* sleeper);

    std::mutex m_mutex; // guards m_posted
    std::deque<std::function<void()>> m_posted;
    std::unordered_set<Sleeper*> m_sleepers;
};

} // namespace quorvin
