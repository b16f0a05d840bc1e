#include "platform/linux/pulse/PulseMainloop.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <utility>

#include <poll.h>
#include <pthread.h>
#include <pulse/timeval.h>

namespace quorvin {

using namespace std::chrono_literals;

PulseMainloop::PulseMainloop() : m_loop(pa_mainloop_new()) {
    if (!m_loop) {
        throw std::runtime_error("The sound library gives no main loop");
    }
    pa_mainloop_set_poll_func(
        m_loop.get(),
        [](pollfd* descriptors, unsigned long count, int timeout, void* self) {
            return static_cast<PulseMainloop*>(self)->poll(descriptors, count, timeout);
        },
        this);
    m_thread = std::thread([this] { run(); });
    pthread_setname_np(m_thread.native_handle(), "capture");
}

PulseMainloop::~PulseMainloop() {
    {
        const Lock lock(*this);
        m_isStopped = true;
        pa_mainloop_wakeup(m_loop.get());
    }
    m_thread.join();
}

pa_mainloop_api* PulseMainloop::api() const {
    return pa_mainloop_get_api(m_loop.get());
}

void PulseMainloop::run() {
    const std::lock_guard lock(m_mutex);
    while (!m_isStopped && pa_mainloop_iterate(m_loop.get(), 1, nullptr) >= 0) {
    }
}

int PulseMainloop::poll(pollfd* descriptors, unsigned long count, int timeout) {
    const auto longest = m_rests.empty() ? 0ms : *m_rests.begin();
    if (longest > 0ms && timeout != 0 && !m_isAwaited) {
        if (const int ready = ::poll(descriptors, count, 0); ready != 0) {
            return ready; // the library reads a little at a time: there is more
        }
        const bool timerWaits = timeout > 0;
        const auto rest =
            timerWaits ? std::min(longest, std::chrono::milliseconds(timeout)) : longest;
        m_disturbed.wait_for(m_mutex, rest, [this] { return m_isDisturbed; });
        if (timerWaits) {
            timeout -= static_cast<int>(rest.count()); // too early after a disturbance does no harm
        }
    }
    m_isDisturbed = false;
    m_mutex.unlock();
    const int ready = ::poll(descriptors, count, timeout);
    m_mutex.lock();
    return ready;
}

void PulseMainloop::disturb() {
    m_isDisturbed = true;
    m_disturbed.notify_one();
}

PulseMainloop::Lock::Lock(PulseMainloop& mainloop) : m_mainloop(mainloop) {
    m_mainloop.m_mutex.lock();
}

PulseMainloop::Lock::~Lock() {
    m_mainloop.disturb();
    m_mainloop.m_mutex.unlock();
}

PulseMainloop::Rest::Rest(PulseMainloop& mainloop, std::chrono::milliseconds duration)
    : m_mainloop(mainloop), m_place(mainloop.m_rests.insert(duration)) {}

PulseMainloop::Rest::~Rest() {
    m_mainloop.m_rests.erase(m_place);
}

PulseMainloop::Timer::Timer(PulseMainloop& mainloop, Clock::duration delay,
                            std::function<void()> work)
    : m_api(mainloop.api()), m_work(std::move(work)) {
    // The interface takes a date, and turns it into a monotonic time at once.
    timeval due{};
    pa_gettimeofday(&due);
    const auto wait = std::chrono::ceil<std::chrono::microseconds>(delay);
    pa_timeval_add(&due, static_cast<pa_usec_t>(std::max<std::int64_t>(wait.count(), 0)));
    m_event = m_api->time_new(
        m_api, &due,
        [](pa_mainloop_api*, pa_time_event*, const timeval*, void* self) {
            // What runs may destroy the timer, and with it the function.
            const auto task = std::exchange(static_cast<Timer*>(self)->m_work, nullptr);
            task();
        },
        this);
}

PulseMainloop::Timer::~Timer() {
    m_api->time_free(m_event);
}

bool PulseMainloop::waitUntil(Clock::time_point deadline, const std::function<bool()>& condition) {
    m_isAwaited = true;
    disturb();
    const bool holds = m_changed.wait_until(m_mutex, deadline, condition);
    m_isAwaited = false;
    return holds;
}

} // namespace quorvin
