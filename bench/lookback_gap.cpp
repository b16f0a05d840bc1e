// Prints how much sound is lost between the look-back and the take that follows it, over fifty
// starts on a sound server of its own.
//
// The microphone hears a sine of five hertz without end. Its phase at the end of the look-back and
// at the beginning of the take tells the time between the two samples, within its period of 200 ms.

#include "platform/linux/pulse/PulseAudioHost.h"
#include "platform/qt/QtScheduler.h"
#include "services/audio/AudioService.h"
#include "support/Quantile.h"
#include "support/SoundServer.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QLoggingCategory>

#include <chrono>
#include <cmath>
#include <complex>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <span>
#include <vector>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int starts = 50;
constexpr int toneFrequency = 5; // hertz
constexpr double sampleRate = 16000;
constexpr std::size_t period = 3200; // samples
/// What a fresh converter needs to settle; left out of the look at the take's beginning.
constexpr std::size_t settling = 160; // samples

void runFor(Scheduler& scheduler, Scheduler::Duration duration) {
    QEventLoop loop;
    scheduler.postDelayed(duration, [&loop] { loop.quit(); });
    loop.exec();
}

/// The tone's phase at the first of these samples, which are one period.
double phase(std::span<const float> samples) {
    std::complex<double> sum;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double angle = 2 * std::numbers::pi * static_cast<double>(i) / period;
        sum += static_cast<double>(samples[i]) * std::polar(1.0, -angle);
    }
    return std::arg(sum);
}

/// Milliseconds between the last sample of the look-back and the first of the take; 0 would be no
/// loss.
double gap(std::span<const float> lookback, std::span<const float> take) {
    const double before = phase(lookback.last(period));
    const double after = phase(take.subspan(settling, period));
    constexpr double turn = 2 * std::numbers::pi;
    const double turns = (after - before) / turn -
                         static_cast<double>(period + settling) / static_cast<double>(period);
    return (turns - std::floor(turns)) * period / sampleRate * 1000;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(u"com.quorvin.*=false"_s);
    testing::SoundServer server;
    server.start({testing::sinkModule(u"room"_s, 48000, 2),
                  testing::microphoneModule(u"mic"_s, u"room"_s, u"Desk Microphone"_s),
                  testing::toneModule(u"room"_s, toneFrequency)});
    QtScheduler scheduler;
    PulseAudioHost host(scheduler);
    AudioService audio(host, scheduler);
    std::vector<double> gaps;
    for (int i = 0; i < starts; ++i) {
        audio.startKeepWarm();
        // Not a multiple of any buffer's length, so that the key falls anywhere into one.
        runFor(scheduler, 700ms + i * 7ms);
        const std::vector<float> lookback = audio.drainWarmBuffer();
        audio.stopKeepWarm();
        audio.startRecording();
        runFor(scheduler, 350ms);
        const std::vector<float> take = audio.stopRecording();
        if (lookback.size() < period || take.size() < settling + period) {
            std::fputs("The microphone is silent\n", stderr);
            return EXIT_FAILURE;
        }
        gaps.push_back(gap(lookback, take));
    }
    std::printf("lookback_gap_median %.3g ms\n", bench::quantile(gaps, 0.5));
    std::printf("lookback_gap_p95 %.3g ms\n", bench::quantile(gaps, 0.95));
    return EXIT_SUCCESS;
}
