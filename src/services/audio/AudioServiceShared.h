#pragma once

#include "services/audio/AudioService.h"
#include "services/audio/LookbackRing.h"
#include "services/audio/Spectrum.h"

#include <QLoggingCategory>

#include <atomic>
#include <mutex>
#include <vector>

namespace quorvin {

Q_DECLARE_LOGGING_CATEGORY(audioServiceLog)

/// What the main thread and the capture threads have in common.
struct AudioService::Shared {
    std::mutex samplesLock; // guards recordedSamples
    std::vector<float> recordedSamples;

    std::mutex warmLock; // guards warmRing
    LookbackRing warmRing;

    std::atomic<float> gainMultiplier{1.0F};
    std::atomic<float> noiseGateThreshold{0.015F};

    /// Only for the tap of the one recording that can run.
    Spectrum spectrum;
};

} // namespace quorvin
