#include "platform/Scheduler.h"
#include "services/audio/AudioService.h"
#include "services/audio/AudioServiceShared.h"
#include "services/audio/CaptureChain.h"

#include <QPointer>

namespace quorvin {

void AudioService::startMonitoring() {
    if (m_isRecording || m_monitorEngine || !m_permissionGranted) {
        return;
    }
    const auto engine = makeEngine();
    const AudioFormat hardware = engine->inputFormat();
    if (!isUsable(hardware)) {
        return;
    }
    engine->installTap(captureFrameCount(hardware.sampleRate),
                       [&scheduler = m_scheduler, service = QPointer(this),
                        channelCount = hardware.channelCount,
                        gain = m_shared->gainMultiplier.load(std::memory_order_relaxed)](
                           std::span<const float> buffer) {
                           if (buffer.size() < channelCount) {
                               return;
                           }
                           const double target = firstChannelRMS(buffer, channelCount) * gain;
                           scheduler.post([service, target] {
                               if (service) {
                                   service->publishLevel(target, monitoringSmoothing);
                               }
                           });
                       });
    onInterruption(engine, &AudioService::stopMonitoring);
    try {
        engine->start();
    } catch (const AudioHostError& error) {
        qCCritical(audioServiceLog, "Failed to start mic monitoring: %s", error.what());
        return;
    }
    m_monitorEngine = engine;
    qCInfo(audioServiceLog, "Mic monitoring started");
}

void AudioService::stopMonitoring() {
    releaseEngine(m_monitorEngine);
    if (!m_isRecording) {
        m_audioLevel = 0;
    }
}

} // namespace quorvin
