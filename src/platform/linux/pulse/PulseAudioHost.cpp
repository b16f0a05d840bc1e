#include "platform/linux/pulse/PulseAudioHost.h"

#include "platform/Scheduler.h"
#include "platform/linux/pulse/PulseCaptureEngine.h"
#include "platform/linux/pulse/PulseConnection.h"
#include "platform/linux/pulse/PulseStream.h"
#include "platform/linux/pulse/SoxrSampleConverter.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvin {

using namespace std::chrono_literals;

namespace {

constexpr auto requestPatience = 2s;

AudioDevice toDevice(const PulseSource& source) {
    AudioDevice device{
        .number = source.number, .name = std::nullopt, .inputChannelCount = source.format.channels};
    if (!source.description.empty()) {
        device.name = source.description;
    }
    return device;
}

} // namespace

PulseAudioHost::PulseAudioHost(Scheduler& scheduler)
    : m_scheduler(scheduler)
    , m_connection(std::make_unique<PulseConnection>())
    , m_streams(std::make_unique<PulseStreams>(*m_connection, scheduler))
    , m_granted(std::make_shared<bool>()) {
    const PulseMainloop::Lock lock(m_connection->mainloop());
    *m_granted = m_connection->connect();
}

PulseAudioHost::~PulseAudioHost() {
    const PulseMainloop::Lock lock(m_connection->mainloop());
    m_streams.reset();
}

MicrophoneAuthorization PulseAudioHost::authorizationStatus() {
    const PulseMainloop::Lock lock(m_connection->mainloop());
    if (!m_connection->connect()) {
        return MicrophoneAuthorization::denied;
    }
    return *m_granted ? MicrophoneAuthorization::authorized
                      : MicrophoneAuthorization::notDetermined;
}

Task<bool> PulseAudioHost::requestAccess() {
    Pending<bool> answer;
    // The server's answer and the end of our patience: the first one counts.
    const std::function<void(bool)> decide =
        [answer, open = std::make_shared<bool>(true)](bool reachable) mutable {
            if (std::exchange(*open, false)) {
                answer.resolve(reachable);
            }
        };
    {
        const PulseMainloop::Lock lock(m_connection->mainloop());
        m_connection->connectThen([&scheduler = m_scheduler, decide](bool connected) {
            scheduler.post([decide, connected] { decide(connected); });
        });
    }
    m_scheduler.postDelayed(requestPatience, [decide] { decide(false); });
    const auto granted = m_granted;
    const bool reachable = co_await answer;
    *granted = *granted || reachable;
    co_return reachable;
}

std::vector<AudioDevice> PulseAudioHost::devices() {
    const PulseMainloop::Lock lock(m_connection->mainloop());
    if (!m_connection->connect()) {
        throw m_connection->error();
    }
    std::vector<AudioDevice> devices;
    std::ranges::transform(microphones(m_connection->sources()), std::back_inserter(devices),
                           toDevice);
    return devices;
}

std::unique_ptr<CaptureEngine> PulseAudioHost::makeCaptureEngine() {
    return std::make_unique<PulseCaptureEngine>(*m_connection, *m_streams, m_scheduler);
}

std::unique_ptr<SampleConverter> PulseAudioHost::makeSampleConverter(const AudioFormat& from,
                                                                     const AudioFormat& to) {
    return SoxrSampleConverter::make(from, to);
}

} // namespace quorvin
