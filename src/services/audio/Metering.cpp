#include "services/audio/Metering.h"

#include <algorithm>
#include <cmath>

namespace quorvin {

float gainFactor(double dB) {
    return static_cast<float>(std::pow(10.0, dB / 20.0));
}

double rms(std::span<const float> samples) {
    double sum = 0;
    for (const double sample : samples) {
        sum += sample * sample;
    }
    return std::sqrt(sum / static_cast<double>(samples.size()));
}

float firstChannelRMS(std::span<const float> samples, std::uint32_t channelCount) {
    const std::size_t frames = samples.size() / channelCount;
    float sum = 0;
    for (std::size_t frame = 0; frame < frames; ++frame) {
        const float sample = samples[frame * channelCount];
        sum += sample * sample;
    }
    return std::sqrt(sum / static_cast<float>(frames));
}

double meterTarget(double rms, float noiseGateThreshold) {
    const bool gateClosed = noiseGateThreshold > static_cast<float>(rms);
    return gateClosed ? 0.0 : rms * 1.5;
}

double smoothedLevel(double old, double target, Smoothing smoothing) {
    // A device may deliver a NaN, and the smoother would never get rid of it.
    const double finiteTarget = std::isfinite(target) ? target : 0.0;
    return smoothing.ofOld * old + smoothing.ofTarget * finiteTarget;
}

FFTBands smoothedBands(const FFTBands& published, const FFTBands& computed) {
    constexpr double rise = 0.75;
    constexpr double fall = 0.45;
    FFTBands bands;
    std::transform(published.begin(), published.end(), computed.begin(), bands.begin(),
                   [](double old, double target) {
                       const double weight = old < target ? rise : fall;
                       return target * weight + (1 - weight) * old;
                   });
    return bands;
}

} // namespace quorvin
