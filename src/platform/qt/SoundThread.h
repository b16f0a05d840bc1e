#pragma once

#include <QThread>

#include <functional>
#include <memory>

namespace quorvin {

/// A thread with an event loop for work that may get stuck in a sound server. It starts with the
/// first piece of work. Main thread only.
class SoundThread {
public:
    SoundThread();
    /// Finishes the work that waits. A thread that is stuck is left behind, and does not keep the
    /// process from ending.
    ~SoundThread();
    SoundThread(const SoundThread&) = delete;
    SoundThread& operator=(const SoundThread&) = delete;

    /// Runs `work` on the thread, in the order of the calls.
    void run(std::function<void()> work);

    [[nodiscard]] bool isRunning() const { return m_thread->isRunning(); }

private:
    class Worker;

    std::unique_ptr<QThread> m_thread;
    std::unique_ptr<Worker> m_worker; ///< lives on the thread
};

} // namespace quorvin
