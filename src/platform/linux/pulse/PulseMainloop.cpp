#include "platform/linux/pulse/PulseMainloop.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <utility>

#include <pulse/timeval.h>

namespace quorvin {

PulseMainloop::PulseMainloop() : m_thread(pa_threaded_mainloop_new()) {
    if (!m_thread) {
        throw std::runtime_error("The sound library gives no main loop");
    }
    pa_threaded_mainloop_set_name(m_thread.get(), "capture");
    if (pa_threaded_mainloop_start(m_thread.get()) < 0) {
        throw std::runtime_error("The capture thread can't be started");
    }
}

PulseMainloop::~PulseMainloop() {
    pa_threaded_mainloop_stop(m_thread.get());
}

void PulseMainloop::Deleter::operator()(pa_threaded_mainloop* thread) const {
    pa_threaded_mainloop_free(thread);
}

pa_mainloop_api* PulseMainloop::api() const {
    return pa_threaded_mainloop_get_api(m_thread.get());
}

PulseMainloop::Lock::Lock(PulseMainloop& mainloop) : m_thread(mainloop.m_thread.get()) {
    pa_threaded_mainloop_lock(m_thread);
}

PulseMainloop::Lock::~Lock() {
    pa_threaded_mainloop_unlock(m_thread);
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
    bool expired = false;
    const Timer timer(*this, deadline - Clock::now(), [this, &expired] {
        expired = true;
        wake();
    });
    while (!condition() && !expired) {
        pa_threaded_mainloop_wait(m_thread.get());
    }
    return condition();
}

void PulseMainloop::wake() {
    pa_threaded_mainloop_signal(m_thread.get(), 0);
}

} // namespace quorvin
