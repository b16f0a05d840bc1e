#include "platform/linux/pulse/SoxrSampleConverter.h"
#include "services/audio/CaptureChain.h"

#include <cmath>
#include <numbers>
#include <vector>

#include <benchmark/benchmark.h>

using namespace quorvin;

namespace {

/// One second of a voice-like mixture, so that no arithmetic is done on zeros.
std::vector<float> oneSecond(const AudioFormat& format) {
    const auto frames = static_cast<std::size_t>(format.sampleRate);
    std::vector<float> samples;
    samples.reserve(frames * format.channelCount);
    for (std::size_t frame = 0; frame < frames; ++frame) {
        const double phase = 2 * std::numbers::pi * static_cast<double>(frame) / format.sampleRate;
        const double sample = 0.3 * std::sin(140 * phase) + 0.2 * std::sin(1130 * phase) +
                              0.05 * std::sin(7000 * phase);
        samples.insert(samples.end(), format.channelCount, static_cast<float>(sample));
    }
    return samples;
}

/// What one tap buffer costs the capture thread, from the device's format to the spectrum's input:
/// folding and resampling from 48 kHz stereo, gain with limiting, RMS and gate.
void capture_chain(benchmark::State& state) {
    constexpr AudioFormat hardware{48000.0, 2};
    const std::size_t frames = captureFrameCount(hardware.sampleRate);
    const std::vector<float> second = oneSecond(hardware);
    CaptureChain chain(TapInput(hardware, SoxrSampleConverter::make(hardware, targetFormat)));

    std::size_t first = 0;
    for ([[maybe_unused]] auto _ : state) {
        const auto buffer = std::span(second).subspan(first, frames * hardware.channelCount);
        benchmark::DoNotOptimize(chain.process(buffer, 2.0F, 0.015F));
        first += buffer.size();
        if (first + buffer.size() > second.size()) {
            first = 0;
        }
    }
    const double bufferSeconds = static_cast<double>(frames) / hardware.sampleRate;
    state.counters["real_time_percent"] =
        benchmark::Counter(bufferSeconds / 100, benchmark::Counter::kIsIterationInvariantRate |
                                                    benchmark::Counter::kInvert);
}

} // namespace

BENCHMARK(capture_chain)->Unit(benchmark::kMicrosecond);
