#include "platform/qt/QtScheduler.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimerEvent>

namespace quorvin {

/// One delayed piece of work: a timer that fires once.
class QtScheduler::Sleeper final : public QObject {
public:
    Sleeper(QtScheduler& scheduler, Duration delay, std::function<void()> work)
        : m_scheduler(scheduler), m_work(std::move(work)) {
        startTimer(std::chrono::ceil<std::chrono::milliseconds>(delay), Qt::PreciseTimer);
    }

    std::function<void()> takeWork() { return std::exchange(m_work, nullptr); }

protected:
    void timerEvent(QTimerEvent* event) override {
        killTimer(event->timerId());
        m_scheduler.wake(this);
    }

private:
    QtScheduler& m_scheduler;
    std::function<void()> m_work;
};

QtScheduler::~QtScheduler() {
    while (runPosted() || !m_sleepers.empty()) {
        if (!m_sleepers.empty()) {
            const auto sleeper = *m_sleepers.begin();
            m_sleepers.erase(sleeper);
            const auto work = sleeper->takeWork();
            delete sleeper;
            work();
        }
    }
}

void QtScheduler::post(std::function<void()> work) {
    bool wake = false;
    {
        const std::lock_guard lock(m_mutex);
        wake = m_posted.empty();
        m_posted.push_back(std::move(work));
    }
    if (wake) {
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }
}

void QtScheduler::postDelayed(Duration delay, std::function<void()> work) {
    m_sleepers.insert(new Sleeper(*this, delay, std::move(work)));
}

Scheduler::Duration QtScheduler::monotonicTime() const {
    return std::chrono::steady_clock::now().time_since_epoch();
}

QDateTime QtScheduler::wallTime() const {
    return QDateTime::currentDateTimeUtc();
}

bool QtScheduler::event(QEvent* event) {
    if (event->type() != QEvent::User) {
        return QObject::event(event);
    }
    runPosted();
    return true;
}

bool QtScheduler::runPosted() {
    // Only what stood in the queue at the beginning: work that posts itself anew must not keep the
    // event loop from the user's input.
    std::deque<std::function<void()>> due;
    {
        const std::lock_guard lock(m_mutex);
        due.swap(m_posted);
    }
    for (auto& work : due) {
        work();
    }
    return !due.empty();
}

void QtScheduler::wake(Sleeper* sleeper) {
    m_sleepers.erase(sleeper);
    sleeper->deleteLater(); // this is called by its timer event
    const auto work = sleeper->takeWork();
    work();
}

} // namespace quorvin
