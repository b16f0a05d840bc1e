#include "platform/qt/SoundThread.h"

#include <QCoreApplication>
#include <QEvent>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace quorvin {

using namespace std::chrono_literals;

namespace {

constexpr auto endsWithin = 250ms;

class Work final : public QEvent {
public:
    explicit Work(std::function<void()> work) : QEvent(User), m_work(std::move(work)) {}
    void run() const { m_work(); }

private:
    std::function<void()> m_work;
};

} // namespace

class SoundThread::Worker final : public QObject {
protected:
    void customEvent(QEvent* event) override { static_cast<Work*>(event)->run(); }
};

SoundThread::SoundThread()
    : m_thread(std::make_unique<QThread>()), m_worker(std::make_unique<Worker>()) {
    m_thread->setObjectName(QStringLiteral("sound"));
    m_worker->moveToThread(m_thread.get());
}

SoundThread::~SoundThread() {
    if (!m_thread->isRunning()) {
        return;
    }
    run([] { QThread::currentThread()->quit(); });
    if (!m_thread->wait(QDeadlineTimer(endsWithin))) {
        static_cast<void>(m_thread.release());
        static_cast<void>(m_worker.release());
        // The clean-up of Qt's sound library, which runs at exit, would wait for the thread. All
        // that is ours is gone by then.
        std::atexit([] {
            std::fflush(nullptr);
            std::_Exit(EXIT_SUCCESS);
        });
    }
}

void SoundThread::run(std::function<void()> work) {
    if (!m_thread->isRunning()) {
        m_thread->start();
    }
    QCoreApplication::postEvent(m_worker.get(), new Work(std::move(work)));
}

} // namespace quorvin
