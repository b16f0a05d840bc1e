#pragma once

#include "services/audio/Metering.h"

#include <array>
#include <memory>
#include <span>

#include <kiss_fftr.h>

namespace quorvin {

/// The 96-band spectrum of a buffer at 16 kHz: bands 0 to 47 from 80 to 450 Hz, 48 to 95 from 450
/// to 3500 Hz, each range evenly spaced in log frequency. Works in its own scratch memory, so one
/// thread at a time.
class Spectrum {
public:
    static constexpr std::size_t length = 1024;

    struct PlanDeleter {
        void operator()(kiss_fftr_state* plan) const;
    };
    using Plan = std::unique_ptr<kiss_fftr_state, PlanDeleter>;

    /// Without a plan (there was no memory for it) every spectrum is zero.
    explicit Spectrum(Plan plan = makePlan());

    /// Of the last 1024 samples, or of all of them followed by zeros when there are fewer.
    /// Allocates nothing.
    [[nodiscard]] FFTBands computeFFTBands(std::span<const float> samples);

private:
    static constexpr std::size_t bins = length / 2;

    /// First and last bin of a band.
    struct BinRange {
        std::size_t low;
        std::size_t high;
    };

    [[nodiscard]] static Plan makePlan();
    [[nodiscard]] static BinRange bandBins(double centerHz);
    [[nodiscard]] double bandEnergy(BinRange range) const;

    Plan m_plan;
    std::array<float, length> m_hannWindow{};
    std::array<BinRange, fftBandCount> m_bands{};
    std::array<float, length> m_windowed{};
    std::array<kiss_fft_cpx, bins + 1> m_transform{};
    std::array<float, bins> m_magnitudes{};
};

} // namespace quorvin
