#include "services/audio/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quorvin {

void Spectrum::PlanDeleter::operator()(kiss_fftr_state* plan) const {
    kiss_fftr_free(plan);
}

Spectrum::Plan Spectrum::makePlan() {
    return Plan(kiss_fftr_alloc(static_cast<int>(length), 0, nullptr, nullptr));
}

Spectrum::Spectrum(Plan plan) : m_plan(std::move(plan)) {
    // Periodic Hann window, normalized to a mean square of 1.
    const double peak = std::sqrt(8.0 / 3.0);
    for (std::size_t n = 0; n < length; ++n) {
        const double phase = 2 * std::numbers::pi * static_cast<double>(n) / length;
        m_hannWindow[n] = static_cast<float>(peak * 0.5 * (1 - std::cos(phase)));
    }

    // The logarithms of 450/80, 80, 3500/450 and 450. Bands 47 and 48 deliberately coincide.
    constexpr std::size_t half = fftBandCount / 2;
    for (std::size_t i = 0; i < half; ++i) {
        const double position = static_cast<double>(i) / (half - 1);
        m_bands[i] = bandBins(std::exp(position * 1.7272209480904843 + 4.382026634673881));
        m_bands[half + i] = bandBins(std::exp(position * 2.0512706647131393 + 6.1092475827643655));
    }
}

FFTBands Spectrum::computeFFTBands(std::span<const float> samples) {
    FFTBands bands{};
    if (!m_plan) {
        return bands;
    }

    const auto last = samples.last(std::min(samples.size(), length));
    const auto end =
        std::transform(last.begin(), last.end(), m_hannWindow.begin(), m_windowed.begin(),
                       [](float sample, float weight) { return sample * weight; });
    std::fill(end, m_windowed.end(), 0.0F);
    kiss_fftr(m_plan.get(), m_windowed.data(), m_transform.data());

    // Twice the transform: the scale that the compression below was tuned for.
    constexpr float scale = 2.0F / static_cast<float>(bins);
    for (std::size_t bin = 0; bin < bins; ++bin) {
        const auto [re, im] = m_transform[bin];
        m_magnitudes[bin] = std::sqrt(re * re + im * im) * scale;
    }
    std::transform(m_bands.begin(), m_bands.end(), bands.begin(),
                   [this](BinRange range) { return bandEnergy(range); });
    return bands;
}

Spectrum::BinRange Spectrum::bandBins(double centerHz) {
    constexpr double binWidth = 15.625;
    const auto low = static_cast<std::size_t>(centerHz * 0.82 / binWidth);
    const auto high = static_cast<std::size_t>(centerHz * 1.18 / binWidth);
    return {std::max<std::size_t>(low, 1), std::min(high + 1, bins - 1)};
}

double Spectrum::bandEnergy(BinRange range) const {
    constexpr double compression = 60;
    float sum = 0;
    for (std::size_t bin = range.low; bin <= range.high; ++bin) {
        sum += m_magnitudes[bin];
    }
    const double average =
        static_cast<double>(sum) / static_cast<double>(range.high - range.low + 1);
    // In this order of arguments a NaN from a broken device becomes 1 and passes with its buffer.
    return std::min(1.0, std::log1p(average * compression) / std::log1p(compression));
}

} // namespace quorvin
