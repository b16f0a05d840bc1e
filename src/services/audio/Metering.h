#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// The arithmetic of the level meter and of the published spectrum.
namespace quorvin {

inline constexpr std::size_t fftBandCount = 96;
/// Band values, 0 to 1.
using FFTBands = std::array<double, fftBandCount>;

/// Linear factor of a gain in decibels: 10^(dB/20).
[[nodiscard]] float gainFactor(double dB);

/// Root mean square in double precision; `samples` must not be empty.
[[nodiscard]] double rms(std::span<const float> samples);

/// Root mean square, in single precision, of the first of `channelCount` interleaved channels;
/// there must be at least one frame.
[[nodiscard]] float firstChannelRMS(std::span<const float> samples, std::uint32_t channelCount);

/// What the recording meter moves toward: 1.5 times the RMS, or 0 where the gate's threshold is
/// greater than it. Not limited.
[[nodiscard]] double meterTarget(double rms, float noiseGateThreshold);

/// One step of a meter's smoother, as weights of the old value and of the target.
struct Smoothing {
    double ofOld;
    double ofTarget;
};
inline constexpr Smoothing recordingSmoothing{0.5, 1 - 0.5};
inline constexpr Smoothing monitoringSmoothing{0.7, 0.3};

/// The smoother's next value, not limited. A target that is no finite number counts as 0.
[[nodiscard]] double smoothedLevel(double old, double target, Smoothing smoothing);

/// The published bands, each moved toward the computed one, up faster than down.
[[nodiscard]] FFTBands smoothedBands(const FFTBands& published, const FFTBands& computed);

} // namespace quorvin
