#include "views/compact/CompactWaveformRaster.h"

#include <cmath>

#include <benchmark/benchmark.h>

using namespace quorvin;

namespace {

constexpr QSizeF canvas(360, 48);

/// One frame, from the heights of the bars to the image that the scene shows.
void frame(benchmark::State& benchmarkState, const WaveformState& state) {
    const auto devicePixelRatio = static_cast<double>(benchmarkState.range(0));
    for ([[maybe_unused]] auto _ : benchmarkState) {
        benchmark::DoNotOptimize(
            rasterized(waveform::drawing(state, canvas), canvas, devicePixelRatio));
    }
}

/// Bars under the bell curves of three formants.
void equalizerFrameSpectrum(benchmark::State& benchmarkState) {
    WaveformState state;
    state.isRecording = true;
    const auto bell = [](int bar, double middle, double width) {
        return std::exp(-std::pow((bar - middle) / width, 2));
    };
    for (int bar = 0; bar < waveform::barCount; ++bar) {
        state.barHeights.append(0.06 + 0.75 * bell(bar, 18, 12) + 0.55 * bell(bar, 48, 14) +
                                0.25 * bell(bar, 76, 10));
    }
    frame(benchmarkState, state);
}

/// Bars as they wait for the engine, under the running highlight.
void equalizerFrameWaiting(benchmark::State& benchmarkState) {
    WaveformState state;
    state.isTranscribing = true;
    state.elapsed = 500;
    for (int bar = 0; bar < waveform::barCount; ++bar) {
        state.barHeights.append(0.25 + 0.25 * std::sin(bar * 0.7));
    }
    frame(benchmarkState, state);
}

void equalizerFrameIdle(benchmark::State& benchmarkState) {
    WaveformState state;
    state.elapsed = 1234;
    frame(benchmarkState, state);
}

} // namespace

// At one and at two pixels to the point.
BENCHMARK(equalizerFrameSpectrum)
    ->Name("equalizer_frame_spectrum")
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(equalizerFrameWaiting)
    ->Name("equalizer_frame_waiting")
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(equalizerFrameIdle)
    ->Name("equalizer_frame_idle")
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMicrosecond);
