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

PulseMainloop::Clock::time_point patienceEnd() {
    return PulseMainloop::Clock::now() + patience;
}

AudioHostError pulseError(int code) {
    return {pa_strerror(code), code};
}

} // namespace

PulseCaptureEngine::PulseCaptureEngine(PulseConnection& connection, PulseStreams& streams,
                                       Scheduler& scheduler)
    : m_connection(connection), m_streams(streams), m_scheduler(scheduler) {}

PulseCaptureEngine::~PulseCaptureEngine() {
    const PulseMainloop::Lock lock(m_connection.mainloop());
    m_rest.reset();
    m_stream.reset();
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
    connectTap();
}

void PulseCaptureEngine::removeTap() {
    const PulseMainloop::Lock lock(m_connection.mainloop());
    m_tap = nullptr;
    connectTap();
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
    openStream(deadline);
    connectTap();
    m_rest.emplace(mainloop, m_latency.value_or(0ms));
    m_running = true;
}

void PulseCaptureEngine::stop() {
    const PulseMainloop::Lock lock(m_connection.mainloop());
    m_running = false;
    m_rest.reset();
    m_streamToken.reset();
    if (m_stream) {
        m_streams.leave(std::move(m_stream));
    }
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

void PulseCaptureEngine::openStream(PulseMainloop::Clock::time_point deadline) {
    m_stream = m_streams.open(*m_source, m_latency ? *m_latency : tapLength());
    m_streamToken = std::make_shared<StreamToken>();
    m_stream->setStateHandler([this] { streamChanged(); });
    const auto decided = [this] { return m_stream->state() != PA_STREAM_CREATING; };
    const bool answered = m_connection.mainloop().waitUntil(deadline, decided);
    if (m_stream->state() != PA_STREAM_READY) {
        const int code = answered ? pa_context_errno(m_connection.context()) : PA_ERR_TIMEOUT;
        m_stream.reset();
        throw pulseError(code);
    }
}

PulseStream::PieceLength PulseCaptureEngine::tapLength() const {
    return std::chrono::microseconds(1s) * m_tapFrameCount / m_source->format.rate;
}

void PulseCaptureEngine::connectTap() {
    if (m_stream && m_tap) {
        m_stream->deliver(m_tapFrameCount, m_tap);
    } else if (m_stream) {
        m_stream->hold();
    }
}

void PulseCaptureEngine::streamChanged() {
    m_connection.mainloop().wake();
    if (PA_STREAM_IS_GOOD(m_stream->state()) || !m_running) {
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

void PulseCaptureEngine::interrupted(const std::string& reason) {
    stop();
    if (const auto handler = std::exchange(m_interruptionHandler, nullptr)) {
        handler(reason); // may destroy the engine
    }
}

} // namespace quorvin
