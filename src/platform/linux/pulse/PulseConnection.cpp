#include "platform/linux/pulse/PulseConnection.h"

#include <algorithm>
#include <utility>

#include <pulse/def.h>
#include <pulse/error.h>
#include <pulse/operation.h>

namespace quorvin {

using namespace std::chrono_literals;

namespace {

constexpr auto patience = 1s;
constexpr PulseMainloop::Clock::duration firstRetryDelay = 1s;
constexpr PulseMainloop::Clock::duration lastRetryDelay = 30s;

/// Nothing here cancels a request: the library drops them all with their context.
void release(pa_operation* operation) {
    if (operation) {
        pa_operation_unref(operation);
    }
}

} // namespace

PulseConnection::PulseConnection() : m_retryDelay(firstRetryDelay) {}

PulseConnection::~PulseConnection() {
    const PulseMainloop::Lock lock(m_mainloop);
    m_retry.reset();
    dropContext();
    m_state = State::down;
    settle();
}

bool PulseConnection::connect(PulseMainloop::Clock::time_point deadline) {
    connectIfDown();
    const auto settled = [this] { return m_state != State::connecting && !m_refreshing; };
    if (!settled()) {
        static_cast<void>(m_mainloop.waitUntil(std::min(deadline, m_patienceEnd), settled));
    }
    return m_state == State::connected;
}

void PulseConnection::connectThen(std::function<void(bool)> answer) {
    connectIfDown();
    m_answers.push_back(std::move(answer));
    if (m_state != State::connecting) {
        settle();
    }
}

AudioHostError PulseConnection::error() const {
    const int code = m_state == State::connecting ? PA_ERR_TIMEOUT : m_errorCode;
    return {pa_strerror(code), code};
}

void PulseConnection::connectIfDown() {
    if (m_state == State::down) {
        openContext();
    }
}

void PulseConnection::openContext() {
    m_retry.reset();
    dropContext();
    m_state = State::connecting;
    m_patienceEnd = PulseMainloop::Clock::now() + patience;
    m_context = pa_context_new(m_mainloop.api(), "Quorvin");
    if (!m_context) {
        contextLost();
        return;
    }
    pa_context_set_state_callback(
        m_context,
        [](pa_context*, void* self) { static_cast<PulseConnection*>(self)->contextChanged(); },
        this);
    // A server that is not running is the session's business, not ours to start.
    if (pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
        contextLost();
    }
}

void PulseConnection::dropContext() {
    if (!m_context) {
        return;
    }
    pa_context_set_state_callback(m_context, nullptr, nullptr);
    pa_context_set_subscribe_callback(m_context, nullptr, nullptr);
    pa_context_disconnect(m_context);
    pa_context_unref(std::exchange(m_context, nullptr));
}

void PulseConnection::contextChanged() {
    switch (pa_context_get_state(m_context)) {
    case PA_CONTEXT_READY:
        pa_context_set_subscribe_callback(
            m_context,
            [](pa_context*, pa_subscription_event_type_t, std::uint32_t, void* self) {
                static_cast<PulseConnection*>(self)->refresh();
            },
            this);
        release(pa_context_subscribe(m_context,
                                     static_cast<pa_subscription_mask_t>(
                                         PA_SUBSCRIPTION_MASK_SOURCE | PA_SUBSCRIPTION_MASK_SERVER),
                                     nullptr, nullptr));
        refresh();
        break;
    case PA_CONTEXT_FAILED:
    case PA_CONTEXT_TERMINATED:
        contextLost();
        break;
    default:
        break;
    }
}

void PulseConnection::contextLost() {
    if (m_state == State::down) {
        return; // a refusal can be told twice: by the callback and by the call
    }
    m_state = State::down;
    m_refreshing = false;
    m_refreshAgain = false;
    m_errorCode = m_context ? pa_context_errno(m_context) : PA_ERR_INTERNAL;
    m_sources.clear();
    m_defaultSourceName.clear();
    m_retry.emplace(m_mainloop, m_retryDelay, [this] { openContext(); });
    m_retryDelay = std::min(2 * m_retryDelay, lastRetryDelay);
    settle();
}

void PulseConnection::settle() {
    for (const auto& answer : std::exchange(m_answers, {})) {
        answer(m_state == State::connected);
    }
    m_mainloop.wake();
}

void PulseConnection::refresh() {
    if (pa_context_get_state(m_context) != PA_CONTEXT_READY) {
        return;
    }
    if (m_refreshing) {
        m_refreshAgain = true;
        return;
    }
    m_refreshing = true;
    if (m_state == State::connected) {
        m_patienceEnd = PulseMainloop::Clock::now() + patience;
    }
    m_incomingSources.clear();
    release(pa_context_get_server_info(
        m_context,
        [](pa_context*, const pa_server_info* server, void* self) {
            if (server) {
                static_cast<PulseConnection*>(self)->m_defaultSourceName =
                    server->default_source_name ? server->default_source_name : "";
            }
        },
        this));
    release(pa_context_get_source_info_list(
        m_context,
        [](pa_context*, const pa_source_info* source, int end, void* self) {
            auto& connection = *static_cast<PulseConnection*>(self);
            if (end == 0) {
                connection.addSource(*source);
            } else {
                connection.sourcesComplete();
            }
        },
        this));
}

void PulseConnection::addSource(const pa_source_info& source) {
    m_incomingSources.push_back({.name = source.name,
                                 .description = source.description ? source.description : "",
                                 .number = 0,
                                 .format = source.sample_spec,
                                 .channels = source.channel_map,
                                 .isMonitor = source.monitor_of_sink != PA_INVALID_INDEX});
}

void PulseConnection::sourcesComplete() {
    m_refreshing = false;
    m_sources = std::move(m_incomingSources);
    assignNumbers(m_sources);
    if (std::exchange(m_refreshAgain, false)) {
        refresh();
    }
    m_state = State::connected;
    m_retryDelay = firstRetryDelay;
    settle();
}

} // namespace quorvin
