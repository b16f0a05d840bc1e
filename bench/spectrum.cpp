#include "services/audio/Spectrum.h"

#include <cmath>
#include <numbers>
#include <vector>

#include <benchmark/benchmark.h>

using namespace quorvin;

namespace {

/// The 96 bands of one full window of samples.
void spectrum(benchmark::State& state) {
    std::vector<float> samples(Spectrum::length);
    for (std::size_t n = 0; n < samples.size(); ++n) {
        const double phase = 2 * std::numbers::pi * static_cast<double>(n) / 16000;
        samples[n] = static_cast<float>(0.3 * std::sin(140 * phase) + 0.2 * std::sin(1130 * phase));
    }
    Spectrum analyzer;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(analyzer.computeFFTBands(samples));
    }
}

} // namespace

BENCHMARK(spectrum)->Unit(benchmark::kMicrosecond);
