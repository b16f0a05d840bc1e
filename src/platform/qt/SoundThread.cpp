#include "platform/qt/SoundThread.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace quorvin {

using namespace std::chrono_literals;

namespace {

constexpr auto endsWithin = 250ms;

} // namespace

SoundThread::SoundThread()
    : m_thread(std::make_unique<QThread>()), m_context(std::make_unique<QObject>()) {
    m_thread->setObjectName(QStringLiteral("sound"));
    m_context->moveToThread(m_thread.get());
}

SoundThread::~SoundThread() {
    if (!m_thread->isRunning()) {
        return;
    }
    run([] { QThread::currentThread()->quit(); });
    if (!m_thread->wait(QDeadlineTimer(endsWithin))) {
        static_cast<void>(m_thread.release());
        static_cast<void>(m_context.release());
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
    QMetaObject::invokeMethod(m_context.get(), std::move(work), Qt::QueuedConnection);
}

} // namespace quorvin
