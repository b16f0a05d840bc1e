#pragma once

#include "platform/Scheduler.h"

#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <utility>

namespace quorvin::testing {

/// A scheduler whose clock the test turns. Work that is due runs inside `advance` and `runPosted`,
/// in the order of its time and, within one moment, of its posting.
class VirtualScheduler final : public Scheduler {
public:
    ~VirtualScheduler() override;

    void post(std::function<void()> work) override;
    void postDelayed(Duration delay, std::function<void()> work) override;
    [[nodiscard]] Duration monotonicTime() const override { return m_now; }
    [[nodiscard]] QDateTime wallTime() const override;

    /// Runs what is posted, and what that posts in turn, without letting time pass.
    void runPosted();
    /// Lets time pass, running everything that falls due on the way.
    void advance(Duration duration);
    /// Moves the wall clock alone, as when somebody sets it.
    void setWallTime(const QDateTime& time);
    /// How much work waits for a later moment.
    [[nodiscard]] std::size_t sleepers() const { return m_delayed.size(); }

private:
    std::mutex m_mutex; // guards m_posted
    std::deque<std::function<void()>> m_posted;
    std::map<std::pair<Duration, std::uint64_t>, std::function<void()>> m_delayed;
    std::uint64_t m_sequence = 0;
    Duration m_now{0};
    QDateTime m_wallStart = QDateTime::fromMSecsSinceEpoch(1'750'000'000'000, Qt::UTC);
};

} // namespace quorvin::testing
