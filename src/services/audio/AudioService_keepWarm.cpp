#include "platform/Scheduler.h"
#include "services/audio/AudioService.h"
#include "services/audio/AudioServiceShared.h"
#include "services/audio/CaptureChain.h"

#include <chrono>
#include <mutex>
#include <utility>

namespace quorvin {

using namespace std::chrono_literals;

namespace {

constexpr auto lookback = std::chrono::seconds(LookbackRing::keepWarmRingSize /
                                               static_cast<std::int64_t>(targetFormat.sampleRate));

/// Nobody looks at the look-back before the take, which gets what is still on its way then.
constexpr auto latency = 300ms;

} // namespace

void AudioService::startKeepWarm() {
    if (m_warmEngine) {
        return;
    }
    if (!m_permissionGranted) {
        qCCritical(audioServiceLog, "Cannot start keep-warm: mic permission not granted");
        return;
    }
    const auto engine = makeEngine();
    const AudioFormat hardware = engine->inputFormat();
    if (!isUsable(hardware)) {
        qCCritical(audioServiceLog, "Keep-warm: invalid hardware format");
        return;
    }
    {
        const std::lock_guard lock(m_shared->warmLock);
        m_shared->warmRing.reset();
    }

    // Without a converter keep-warm deliberately counts as running and remembers nothing.
    auto converter =
        needsConversion(hardware) ? m_host.makeSampleConverter(hardware, targetFormat) : nullptr;
    const auto input = std::make_shared<TapInput>(hardware, std::move(converter));
    engine->setLatency(latency);
    engine->installTap(captureFrameCount(hardware.sampleRate),
                       loggingFailures([input, shared = m_shared](std::span<const float> buffer) {
                           const auto samples = input->samples(buffer);
                           const std::lock_guard lock(shared->warmLock);
                           shared->warmRing.write(samples);
                       }));
    onInterruption(engine, &AudioService::stopKeepWarm);
    engine->prepare();
    try {
        engine->start();
    } catch (const AudioHostError& error) {
        engine->removeTap();
        qCCritical(audioServiceLog, "Failed to start keep-warm engine: %s", error.what());
        return;
    }
    m_warmEngine = engine;
    m_isKeepWarmRunning = true;
    qCInfo(audioServiceLog, "Keep-warm started (ring buffer: %lds lookback)",
           static_cast<long>(lookback.count()));
}

void AudioService::stopKeepWarm() {
    if (!m_warmEngine) {
        return;
    }
    releaseEngine(m_warmEngine);
    m_keepWarmEnd = m_scheduler.monotonicTime();
    m_isKeepWarmRunning = false;
    qCInfo(audioServiceLog, "Keep-warm stopped");
}

std::vector<float> AudioService::drainWarmBuffer() {
    std::vector<float> samples;
    {
        const std::lock_guard lock(m_shared->warmLock);
        samples = m_shared->warmRing.drain();
    }
    // A device may have gone long ago.
    if (!m_warmEngine && m_scheduler.monotonicTime() - m_keepWarmEnd > lookback) {
        samples.clear();
    }
    return samples;
}

} // namespace quorvin
