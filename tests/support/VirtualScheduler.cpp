#include "support/VirtualScheduler.h"

namespace quorvin::testing {

VirtualScheduler::~VirtualScheduler() {
    runPosted();
    while (!m_delayed.empty()) {
        auto work = std::move(m_delayed.extract(m_delayed.begin()).mapped());
        work();
        runPosted();
    }
}

void VirtualScheduler::post(std::function<void()> work) {
    const std::lock_guard lock(m_mutex);
    m_posted.push_back(std::move(work));
}

void VirtualScheduler::postDelayed(Duration delay, std::function<void()> work) {
    m_delayed.emplace(std::pair(m_now + delay, m_sequence++), std::move(work));
}

QDateTime VirtualScheduler::wallTime() const {
    return m_wallStart.addMSecs(std::chrono::floor<std::chrono::milliseconds>(m_now).count());
}

void VirtualScheduler::runPosted() {
    for (;;) {
        std::function<void()> work;
        {
            const std::lock_guard lock(m_mutex);
            if (m_posted.empty()) {
                return;
            }
            work = std::move(m_posted.front());
            m_posted.pop_front();
        }
        work();
    }
}

void VirtualScheduler::advance(Duration duration) {
    const Duration end = m_now + duration;
    runPosted();
    while (!m_delayed.empty() && m_delayed.begin()->first.first <= end) {
        auto node = m_delayed.extract(m_delayed.begin());
        m_now = std::max(m_now, node.key().first);
        node.mapped()();
        runPosted();
    }
    m_now = end;
}

void VirtualScheduler::setWallTime(const QDateTime& time) {
    m_wallStart = time.addMSecs(-std::chrono::floor<std::chrono::milliseconds>(m_now).count());
}

} // namespace quorvin::testing
