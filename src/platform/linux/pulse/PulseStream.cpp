#include "platform/linux/pulse/PulseStream.h"

#include "platform/Scheduler.h"

#include <utility>

#include <pulse/def.h>
#include <pulse/error.h>
#include <pulse/operation.h>

namespace quorvin {

namespace {

pa_sample_spec floatFormat(const PulseSource& source) {
    return {.format = PA_SAMPLE_FLOAT32NE,
            .rate = source.format.rate,
            .channels = source.format.channels};
}

pa_buffer_attr bufferFor(const pa_sample_spec& format, PulseStream::PieceLength length) {
    constexpr auto serversChoice = static_cast<std::uint32_t>(-1);
    return {.maxlength = serversChoice,
            .tlength = serversChoice,
            .prebuf = serversChoice,
            .minreq = serversChoice,
            .fragsize = static_cast<std::uint32_t>(
                pa_usec_to_bytes(static_cast<pa_usec_t>(length.count()), &format))};
}

AudioHostError lastError(const PulseConnection& connection) {
    const int code = pa_context_errno(connection.context());
    return {pa_strerror(code), code};
}

} // namespace

PulseStream::PulseStream(PulseConnection& connection, const PulseSource& source, PieceLength length)
    : m_source(source), m_pieceLength(length) {
    const pa_sample_spec format = floatFormat(source);
    m_stream = pa_stream_new(connection.context(), "Dictation", &format, &source.channels);
    if (!m_stream) {
        throw lastError(connection);
    }
    pa_stream_set_state_callback(
        m_stream,
        [](pa_stream*, void* self) {
            if (const auto& changed = static_cast<PulseStream*>(self)->m_changed) {
                changed();
            }
        },
        this);
    pa_stream_set_read_callback(
        m_stream,
        [](pa_stream*, std::size_t, void* self) { static_cast<PulseStream*>(self)->readable(); },
        this);
    const pa_buffer_attr buffer = bufferFor(format, length);
    constexpr auto flags =
        static_cast<pa_stream_flags_t>(PA_STREAM_DONT_MOVE | PA_STREAM_ADJUST_LATENCY);
    if (pa_stream_connect_record(m_stream, source.name.c_str(), &buffer, flags) < 0) {
        pa_stream_unref(m_stream);
        throw lastError(connection);
    }
}

PulseStream::~PulseStream() {
    pa_stream_set_state_callback(m_stream, nullptr, nullptr);
    pa_stream_set_read_callback(m_stream, nullptr, nullptr);
    pa_stream_disconnect(m_stream);
    pa_stream_unref(m_stream);
}

bool PulseStream::isFor(const PulseSource& source) const {
    return m_source.name == source.name &&
           pa_sample_spec_equal(&m_source.format, &source.format) != 0;
}

void PulseStream::setPieceLength(PieceLength length) {
    if (length == m_pieceLength) {
        return;
    }
    m_pieceLength = length;
    const pa_buffer_attr buffer = bufferFor(floatFormat(m_source), length);
    if (auto* operation = pa_stream_set_buffer_attr(m_stream, &buffer, nullptr, nullptr)) {
        pa_operation_unref(operation);
    }
}

void PulseStream::deliver(std::uint32_t frameCount, BlockAssembler::Sink sink) {
    hold();
    m_blocks.emplace(std::size_t{frameCount} * m_source.format.channels, std::move(sink));
}

void PulseStream::hold() {
    if (m_blocks) {
        const auto leftOver = m_blocks->leftOver();
        m_leftOver.insert(m_leftOver.end(), leftOver.begin(), leftOver.end());
        m_blocks.reset();
    }
}

void PulseStream::readable() {
    if (!m_blocks) {
        return;
    }
    m_blocks->append(m_leftOver);
    m_leftOver.clear();
    const void* data = nullptr;
    std::size_t size = 0;
    while (pa_stream_peek(m_stream, &data, &size) == 0 && size > 0) {
        const std::size_t count = size / sizeof(float);
        if (data) {
            m_blocks->append({static_cast<const float*>(data), count});
        } else {
            m_blocks->appendSilence(count); // a hole: left out, it would shift all that follows
        }
        pa_stream_drop(m_stream);
    }
}

PulseStreams::PulseStreams(PulseConnection& connection, Scheduler& scheduler)
    : m_connection(connection), m_scheduler(scheduler), m_left(std::make_shared<Left>()) {}

std::unique_ptr<PulseStream> PulseStreams::open(const PulseSource& source,
                                                PulseStream::PieceLength length) {
    if (auto left = std::exchange(m_left->stream, nullptr);
        left && left->state() == PA_STREAM_READY && left->isFor(source)) {
        left->setPieceLength(length);
        return left;
    }
    return std::make_unique<PulseStream>(m_connection, source, length);
}

void PulseStreams::leave(std::unique_ptr<PulseStream> stream) {
    stream->hold();
    stream->setStateHandler(nullptr);
    m_left->stream = std::move(stream);
    m_scheduler.post([&mainloop = m_connection.mainloop(), left = std::weak_ptr(m_left)] {
        if (const auto present = left.lock()) {
            const PulseMainloop::Lock lock(mainloop);
            present->stream.reset();
        }
    });
}

} // namespace quorvin
