#include "views/ring/RingRaster.h"
#include "views/ring/RingStyles.h"

#include <benchmark/benchmark.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSizeF surface(300, 300);

/// In the middle of a sentence.
RingFrame recording() {
    return {.size = surface,
            .mode = RingMode::recording,
            .time = 12.5,
            .smoothLevel = 0.6,
            .peakLevel = 0.8,
            .breathPhase = 2};
}

RingFrame idle() {
    return {.size = surface, .time = 12.5, .breathPhase = 2};
}

/// One frame, from the state to the image that the scene shows; the argument is the number of
/// pixels to the point.
void frame(benchmark::State& benchmarkState, const QString& style, const RingFrame& what) {
    const auto devicePixelRatio = static_cast<double>(benchmarkState.range(0));
    RingPicture picture;
    RingRaster raster;
    for ([[maybe_unused]] auto _ : benchmarkState) {
        picture.clear();
        drawRing(picture, what, style);
        benchmark::DoNotOptimize(raster.painted(picture, surface, devicePixelRatio));
    }
}

} // namespace

#define RING_FRAME(name, style, what)                                                              \
    BENCHMARK_CAPTURE(frame, name, style, what)                                                    \
        ->Name("ring_frame_" #name)                                                                \
        ->Arg(1)                                                                                   \
        ->Arg(2)                                                                                   \
        ->Unit(benchmark::kMicrosecond)

RING_FRAME(wave, u"wave"_s, recording());
RING_FRAME(wave_idle, u"wave"_s, idle());
RING_FRAME(pulse, u"pulse"_s, recording());
RING_FRAME(comet, u"comet"_s, recording());
RING_FRAME(bars, u"bars"_s, recording());
RING_FRAME(orbit, u"orbit"_s, recording());
RING_FRAME(nova, u"nova"_s, recording());
RING_FRAME(dna, u"dna"_s, recording());
RING_FRAME(plasma, u"plasma"_s, recording());
RING_FRAME(radar, u"radar"_s, recording());
