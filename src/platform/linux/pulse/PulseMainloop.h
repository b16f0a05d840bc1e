#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <thread>

#include <pulse/mainloop-api.h>
#include <pulse/mainloop.h>

namespace quorvin {

/// The thread on which the sound library calls back: the capture thread. It sleeps in the kernel
/// until there is something to do. The library may be called only under the lock, which the thread
/// itself holds during every callback.
class PulseMainloop {
public:
    using Clock = std::chrono::steady_clock;

    /// Throws std::runtime_error when the system gives no thread.
    PulseMainloop();
    /// Ends the thread. Everything that uses it must be gone, and the lock must be free.
    ~PulseMainloop();
    PulseMainloop(const PulseMainloop&) = delete;
    PulseMainloop& operator=(const PulseMainloop&) = delete;

    [[nodiscard]] pa_mainloop_api* api() const;

    /// While it lives, no callback runs. May be nested, and taken in a callback.
    class Lock {
    public:
        explicit Lock(PulseMainloop& mainloop);
        ~Lock();
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

    private:
        PulseMainloop& m_mainloop;
    };

    /// Calls `work` once on the capture thread, unless it is destroyed before. Made and destroyed
    /// under the lock; `work` may destroy its timer.
    class Timer {
    public:
        Timer(PulseMainloop& mainloop, Clock::duration delay, std::function<void()> work);
        ~Timer();
        Timer(const Timer&) = delete;
        Timer& operator=(const Timer&) = delete;

    private:
        pa_mainloop_api* m_api;
        std::function<void()> m_work;
        pa_time_event* m_event;
    };

    /// While it lives, what the server sends may wait for more of it, so that the thread wakes less
    /// often for the many pieces of a stream. Of several the shortest counts. What is done under
    /// the lock waits for nothing. Made and destroyed under the lock.
    class Rest {
    public:
        Rest(PulseMainloop& mainloop, std::chrono::milliseconds duration);
        ~Rest();
        Rest(const Rest&) = delete;
        Rest& operator=(const Rest&) = delete;

    private:
        PulseMainloop& m_mainloop;
        std::multiset<std::chrono::milliseconds>::iterator m_place;
    };

    /// Gives up the lock until `condition`, which is looked at after every `wake`, holds or
    /// `deadline` has come; returns whether it holds. Under the lock, not nested, on the main
    /// thread.
    [[nodiscard]] bool waitUntil(Clock::time_point deadline,
                                 const std::function<bool()>& condition);
    /// Makes `waitUntil` look again. Under the lock.
    void wake() { m_changed.notify_all(); }

private:
    struct Deleter {
        void operator()(pa_mainloop* loop) const { pa_mainloop_free(loop); }
    };

    void run();
    /// Gives up the lock until there is something to do.
    [[nodiscard]] int poll(pollfd* descriptors, unsigned long count, int timeout);
    void disturb();

    std::unique_ptr<pa_mainloop, Deleter> m_loop;
    std::recursive_mutex m_mutex;

    // The rest under the lock.
    std::condition_variable_any m_changed;
    std::condition_variable_any m_disturbed;
    std::multiset<std::chrono::milliseconds> m_rests;
    bool m_isDisturbed = false;
    bool m_isAwaited = false;
    bool m_isStopped = false;
    std::thread m_thread;
};

} // namespace quorvin
