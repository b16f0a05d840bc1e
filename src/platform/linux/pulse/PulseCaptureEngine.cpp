#include "platform/linux/pulse/PulseCaptureEngine.h"

#include "platform/Scheduler.h"

#include <algorithm>
#include <utility>

#include <pulse/def.h>
#include <pulse/error.h>

namespace quorvin {

using namespace std::chrono_literals;

namespace {

constexpr auto patience = 2s;
/// How much the server collects before it sends: less costs wake-ups, more is lost between the
/// look-back and the take.
constexpr auto fragment = 7ms;

PulseMainloop::Clock::time_point patienceEnd() {
    return PulseMainloop::Clock::now() + patience;
}

AudioHostError pulseError(int code) {
    return {pa_strerror(code), code};
}

} // namespace

PulseCaptureEngine::PulseCaptureEngine(PulseConnection& connection, Scheduler& scheduler)
    : m_connection(connection), m_scheduler(scheduler) {}

PulseCaptureEngine::~PulseCaptureEngine() {
    const PulseMainloop::Lock lock(m_connection.mainloop());
    closeStream();
}

void PulseCaptureEngine::setDevice(std::uint32_t number) {
    const PulseMainloop::Lock lock(m_connection.mainloop());
    if (!m_connection.connect(patienceEnd())) {
        throw m_connection.error();
    }
    const auto& sources = m_connection.sources();
    const auto found = std::ranges::find(sources, number, &PulseSource::number);
    if (found == sources.end()) {
        throw pulseError(PA_ERR_NOENTITY);
    }
    m_source = *found;
}

AudioFormat PulseCaptureEngine::inputFormat() {
    prepare();
    if (!m_source) {
        return {};
    }
    return {.sampleRate = static_cast<double>(m_source->format.rate),
            .channelCount = m_source->format.channels};
}

void PulseCaptureEngine::installTap(std::uint32_t frameCount, Tap tap) {
    const PulseMainloop::Lock lock(m_connection.mainloop());
    m_tapFrameCount = frameCount;
    m_tap = std::move(tap);
    armTap();
}

void PulseCaptureEngine::removeTap() {
    const PulseMainloop::Lock lock(m_connection.mainloop());
    m_blocks.reset();
    m_tap = nullptr;
}

void PulseCaptureEngine::setInterruptionHandler(
    std::function<void(const std::string& reason)> handler) {
    m_interruptionHandler = std::move(handler);
}

void PulseCaptureEngine::prepare() {
    const PulseMainloop::Lock lock(m_connection.mainloop());
    chooseSource(patienceEnd());
}

void PulseCaptureEngine::start() {
    if (m_running) {
        return;
    }
    const auto deadline = patienceEnd();
    PulseMainloop& mainloop = m_connection.mainloop();
    const PulseMainloop::Lock lock(mainloop);
    if (!m_connection.connect(deadline)) {
        throw m_connection.error();
    }
    chooseSource(deadline);
    if (!m_source) {
        throw pulseError(PA_ERR_NOENTITY);
    }
    armTap();
    openStream();
    const auto decided = [this] { return pa_stream_get_state(m_stream) != PA_STREAM_CREATING; };
    const bool answered = mainloop.waitUntil(deadline, decided);
    if (pa_stream_get_state(m_stream) != PA_STREAM_READY) {
        const int code = answered ? pa_context_errno(m_connection.context()) : PA_ERR_TIMEOUT;
        closeStream();
        throw pulseError(code);
    }
    m_running = true;
}

void PulseCaptureEngine::stop() {
    const PulseMainloop::Lock lock(m_connection.mainloop());
    closeStream();
}

void PulseCaptureEngine::chooseSource(PulseMainloop::Clock::time_point deadline) {
    // A source once chosen stays: the caller has built its converter for that format.
    if (m_source || !m_connection.connect(deadline)) {
        return;
    }
    const auto candidates = microphones(m_connection.sources());
    if (const auto* source = defaultMicrophone(candidates, m_connection.defaultSourceName())) {
        m_source = *source;
    }
}

void PulseCaptureEngine::armTap() {
    if (m_tap && m_source) {
        m_blocks.emplace(std::size_t{m_tapFrameCount} * m_source->format.channels, m_tap);
    }
}

void PulseCaptureEngine::openStream() {
    const pa_sample_spec format{.format = PA_SAMPLE_FLOAT32NE,
                                .rate = m_source->format.rate,
                                .channels = m_source->format.channels};
    m_stream = pa_stream_new(m_connection.context(), "Dictation", &format, &m_source->channels);
    if (!m_stream) {
        throw pulseError(pa_context_errno(m_connection.context()));
    }
    m_streamToken = std::make_shared<StreamToken>();
    pa_stream_set_state_callback(
        m_stream,
        [](pa_stream*, void* self) { static_cast<PulseCaptureEngine*>(self)->streamChanged(); },
        this);
    pa_stream_set_read_callback(
        m_stream,
        [](pa_stream*, std::size_t, void* self) {
            static_cast<PulseCaptureEngine*>(self)->streamReadable();
        },
        this);
    constexpr auto serversChoice = static_cast<std::uint32_t>(-1);
    const pa_buffer_attr buffer{.maxlength = serversChoice,
                                .tlength = serversChoice,
                                .prebuf = serversChoice,
                                .minreq = serversChoice,
                                .fragsize = static_cast<std::uint32_t>(pa_usec_to_bytes(
                                    std::chrono::microseconds(fragment).count(), &format))};
    constexpr auto flags =
        static_cast<pa_stream_flags_t>(PA_STREAM_DONT_MOVE | PA_STREAM_ADJUST_LATENCY);
    if (pa_stream_connect_record(m_stream, m_source->name.c_str(), &buffer, flags) < 0) {
        const int code = pa_context_errno(m_connection.context());
        closeStream();
        throw pulseError(code);
    }
}

void PulseCaptureEngine::closeStream() {
    m_running = false;
    m_streamToken.reset();
    if (m_stream) {
        pa_stream_set_state_callback(m_stream, nullptr, nullptr);
        pa_stream_set_read_callback(m_stream, nullptr, nullptr);
        pa_stream_disconnect(m_stream);
        pa_stream_unref(std::exchange(m_stream, nullptr));
    }
}

void PulseCaptureEngine::streamChanged() {
    m_connection.mainloop().wake();
    if (PA_STREAM_IS_GOOD(pa_stream_get_state(m_stream)) || !m_running) {
        return;
    }
    const char* reason = pa_strerror(pa_context_errno(m_connection.context()));
    m_connection.refresh();
    m_scheduler.post([this, token = std::weak_ptr(m_streamToken), reason = std::string(reason)] {
        if (!token.expired()) {
            interrupted(reason);
        }
    });
}

void PulseCaptureEngine::streamReadable() {
    const void* data = nullptr;
    std::size_t size = 0;
    while (pa_stream_peek(m_stream, &data, &size) == 0 && size > 0) {
        const std::size_t count = size / sizeof(float);
        if (m_blocks && data) {
            m_blocks->append({static_cast<const float*>(data), count});
        } else if (m_blocks) {
            m_blocks->appendSilence(count); // a hole: left out, it would shift all that follows
        }
        pa_stream_drop(m_stream);
    }
}

void PulseCaptureEngine::interrupted(const std::string& reason) {
    stop();
    if (const auto handler = std::exchange(m_interruptionHandler, nullptr)) {
        handler(reason); // may destroy the engine
    }
}

} // namespace quorvin
