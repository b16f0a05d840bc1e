#include "services/audio/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

#include <gtest/gtest.h>

using namespace quorvin;

namespace {

constexpr std::size_t length = 1024;
constexpr double binWidth = 16000.0 / length;
constexpr double tolerance = 1e-4;

std::vector<float> sine(double frequency, std::size_t count = length, double amplitude = 1) {
    std::vector<float> samples(count);
    for (std::size_t n = 0; n < count; ++n) {
        const double time = static_cast<double>(n) / 16000;
        samples[n] =
            static_cast<float>(amplitude * std::sin(2 * std::numbers::pi * frequency * time));
    }
    return samples;
}

std::vector<float> noise(std::size_t count) {
    std::mt19937 generator(20240229);
    std::vector<float> samples(count);
    for (float& sample : samples) {
        // Not a library distribution: those differ between libraries.
        sample = static_cast<float>(generator()) / 2147483648.0F - 1.0F;
    }
    return samples;
}

/// Twice the magnitude of the discrete Fourier sum, by its definition and in double precision, of
/// exactly 1024 samples under the normalized periodic Hann window, over 512.
std::vector<double> magnitudesByDefinition(const std::vector<float>& samples) {
    std::vector<std::complex<double>> roots(length);
    for (std::size_t j = 0; j < length; ++j) {
        roots[j] = std::polar(1.0, -2 * std::numbers::pi * static_cast<double>(j) / length);
    }
    std::vector<double> magnitudes(length / 2);
    for (std::size_t k = 0; k < magnitudes.size(); ++k) {
        std::complex<double> sum;
        for (std::size_t n = 0; n < length; ++n) {
            const double hann = 0.5 * (1 - roots[n].real());
            sum += std::sqrt(8.0 / 3.0) * hann * static_cast<double>(samples.at(n)) *
                   roots[n * k % length];
        }
        magnitudes[k] = 2 * std::abs(sum) / 512;
    }
    return magnitudes;
}

FFTBands bandsByDefinition(const std::vector<float>& samples) {
    const auto magnitudes = magnitudesByDefinition(samples);
    FFTBands bands{};
    for (std::size_t band = 0; band < bands.size(); ++band) {
        const double from = band < 48 ? 80 : 450;
        const double to = band < 48 ? 450 : 3500;
        const double centre = from * std::pow(to / from, static_cast<double>(band % 48) / 47);
        const auto low = std::max(1, static_cast<int>(centre * 0.82 / binWidth));
        const auto high = std::min(511, static_cast<int>(centre * 1.18 / binWidth) + 1);
        double sum = 0;
        for (int bin = low; bin <= high; ++bin) {
            sum += magnitudes.at(static_cast<std::size_t>(bin));
        }
        bands[band] = std::min(1.0, std::log1p(sum / (high - low + 1) * 60) / std::log1p(60));
    }
    return bands;
}

void expectByDefinition(const std::vector<float>& samples) {
    Spectrum spectrum;
    const FFTBands computed = spectrum.computeFFTBands(samples);
    const FFTBands expected = bandsByDefinition(samples);
    for (std::size_t band = 0; band < computed.size(); ++band) {
        EXPECT_NEAR(computed[band], expected[band], tolerance) << "band " << band;
    }
}

} // namespace

TEST(Spectrum, AFullScaleSineAgreesWithTheFourierSum) {
    expectByDefinition(sine(1000));
}

TEST(Spectrum, ASineBetweenTwoBinsAgreesWithTheFourierSum) {
    expectByDefinition(sine(207.3));
}

TEST(Spectrum, WhiteNoiseAgreesWithTheFourierSum) {
    expectByDefinition(noise(length));
}

TEST(Spectrum, AnImpulseAgreesWithTheFourierSum) {
    std::vector<float> impulse(length);
    impulse[300] = 1;
    expectByDefinition(impulse);
}

TEST(Spectrum, AnImpulseIsEvenOverTheBands) {
    std::vector<float> impulse(length);
    impulse[length / 2] = 1; // where the window is sqrt(8/3)
    Spectrum spectrum;
    const double magnitude = std::sqrt(8.0 / 3.0) * 2 / 512;
    for (const double band : spectrum.computeFFTBands(impulse)) {
        EXPECT_NEAR(band, std::log1p(magnitude * 60) / std::log1p(60), 1e-6);
    }
}

TEST(Spectrum, ASineOnABinHasTheAmplitudeOfTheWindow) {
    // 1000 Hz is bin 64. The window spreads it over three bins: sqrt(8/3) in the middle and half of
    // it at each side. Band 71 begins at bin 64 and is 30 bins wide.
    Spectrum spectrum;
    const double sum = std::sqrt(8.0 / 3.0) * 1.5;
    EXPECT_NEAR(spectrum.computeFFTBands(sine(1000))[71],
                std::log1p(sum / 30 * 60) / std::log1p(60), 1e-6);
}

TEST(Spectrum, BandsReachFromTheirLowToTheirHighBin) {
    struct Span {
        std::size_t band;
        double low;
        double high;
    };
    Spectrum spectrum;
    const auto bandOfSineAtBin = [&spectrum](std::size_t band, double bin) {
        return spectrum.computeFFTBands(sine(bin * binWidth))[band];
    };
    for (const Span& span : {Span{0, 4, 7}, Span{23, 9, 15}, Span{47, 23, 34}, Span{48, 23, 34},
                             Span{71, 64, 93}, Span{95, 183, 265}}) {
        SCOPED_TRACE(span.band);
        // A sine on a bin shows in that bin and its two neighbours.
        EXPECT_LT(bandOfSineAtBin(span.band, span.low - 2), tolerance);
        EXPECT_GT(bandOfSineAtBin(span.band, span.low - 1), 0.1);
        EXPECT_GT(bandOfSineAtBin(span.band, span.high + 1), 0.1);
        EXPECT_LT(bandOfSineAtBin(span.band, span.high + 2), tolerance);
    }
}

TEST(Spectrum, ASineRaisesTheBandsAroundItAndLeavesTheLowRangeLow) {
    Spectrum spectrum;
    const FFTBands bands = spectrum.computeFFTBands(sine(1000));
    for (std::size_t band = 0; band < 48; ++band) {
        EXPECT_LT(bands[band], 0.01) << "band " << band;
    }
    // Band 66 lies at 987 Hz and band 67 at 1031 Hz.
    EXPECT_GT(bands[66], 0.4);
    EXPECT_GT(bands[67], 0.4);
    EXPECT_LT(bands[95], 0.01);
}

TEST(Spectrum, SilenceIsNinetySixZeros) {
    Spectrum spectrum;
    EXPECT_EQ(spectrum.computeFFTBands(std::vector<float>(341)), FFTBands{});
}

TEST(Spectrum, BandsFortySevenAndFortyEightAlwaysAgree) {
    Spectrum spectrum;
    const FFTBands bands = spectrum.computeFFTBands(noise(length));
    EXPECT_GT(bands[47], 0.0);
    EXPECT_EQ(bands[47], bands[48]);
}

TEST(Spectrum, OnlyTheLastSamplesOfALongBufferCount) {
    Spectrum spectrum;
    const auto samples = noise(2000);
    const FFTBands bands = spectrum.computeFFTBands(samples);
    EXPECT_EQ(bands, spectrum.computeFFTBands(std::span(samples).last(length)));
    EXPECT_NE(bands, spectrum.computeFFTBands(std::span(samples).first(length)));
}

TEST(Spectrum, AShortBufferIsFollowedByZeros) {
    Spectrum spectrum;
    auto samples = noise(341);
    static_cast<void>(spectrum.computeFFTBands(noise(length))); // leaves nothing behind
    const FFTBands bands = spectrum.computeFFTBands(samples);
    samples.resize(length);
    EXPECT_EQ(bands, spectrum.computeFFTBands(samples));
    EXPECT_NE(bands, FFTBands{});
}

TEST(Spectrum, ABandIsCappedAtOne) {
    Spectrum spectrum;
    EXPECT_EQ(spectrum.computeFFTBands(sine(1000, length, 100))[66], 1.0);
}

TEST(Spectrum, ANumberThatIsNoneStaysWithinTheRange) {
    Spectrum spectrum;
    auto samples = sine(1000);
    samples[500] = std::numeric_limits<float>::quiet_NaN();
    for (const double band : spectrum.computeFFTBands(samples)) {
        EXPECT_GE(band, 0.0);
        EXPECT_LE(band, 1.0);
    }
    EXPECT_EQ(spectrum.computeFFTBands(sine(1000)), Spectrum().computeFFTBands(sine(1000)));
}

TEST(Spectrum, WithoutAPlanItStaysAtZero) {
    Spectrum spectrum(nullptr);
    EXPECT_EQ(spectrum.computeFFTBands(noise(length)), FFTBands{});
}
