// Prints how well and how promptly device audio becomes 16 kHz mono: signal to noise and distortion
// of a 1 kHz tone, what is left of a 10 kHz tone, and the most that the converter ever holds back.

#include "platform/linux/pulse/SoxrSampleConverter.h"
#include "unit/platform/linux/pulse/ToneAnalysis.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <vector>

using namespace quorvin;
using quorvin::testing::fitSine;
using quorvin::testing::power;
using quorvin::testing::tone;

namespace {

constexpr AudioFormat speech{.sampleRate = 16000, .channelCount = 1};

/// A device's rate, its name in the output, and the tap size that fits it.
struct Device {
    const char* name;
    double rate;
    std::size_t tapFrames;
};

struct Conversion {
    std::vector<float> output;
    double mostHeldBackMs = 0; // once the first second is over
};

/// Feeds ten seconds in whole taps, with room for as much as they last.
Conversion convert(const Device& device, double frequency) {
    const auto converter =
        SoxrSampleConverter::make({.sampleRate = device.rate, .channelCount = 1}, speech);
    const auto input =
        tone(frequency, 0.5, device.rate, static_cast<std::size_t>(10 * device.rate));
    const double outputPerInput = speech.sampleRate / device.rate;
    std::vector<float> room(
        static_cast<std::size_t>(outputPerInput * static_cast<double>(device.tapFrames)));
    Conversion result;
    for (std::size_t fed = device.tapFrames; fed <= input.size(); fed += device.tapFrames) {
        const auto tap = std::span(input).subspan(fed - device.tapFrames, device.tapFrames);
        const std::size_t written = converter->convert(tap, room);
        std::copy_n(room.begin(), written, std::back_inserter(result.output));
        const double missing =
            static_cast<double>(fed) * outputPerInput - static_cast<double>(result.output.size());
        if (static_cast<double>(fed) > device.rate) {
            result.mostHeldBackMs =
                std::max(result.mostHeldBackMs, missing / speech.sampleRate * 1000);
        }
    }
    return result;
}

/// Eight seconds from the middle.
std::span<const float> settled(const Conversion& conversion) {
    return std::span(conversion.output).subspan(16000, 8 * 16000);
}

} // namespace

int main() {
    constexpr double inputPower = 0.5 * 0.5 / 2;
    for (const Device& device :
         {Device{"44k1", 44100, 882}, Device{"48k", 48000, 1023}, Device{"96k", 96000, 1026}}) {
        const Conversion kept = convert(device, 1000);
        const Conversion removed = convert(device, 10000);
        std::printf("converter_sinad_%s %.1f dB\n", device.name,
                    fitSine(settled(kept), 1000, speech.sampleRate).sinad());
        std::printf("converter_alias_%s %.1f dB\n", device.name,
                    10 * std::log10(power(settled(removed)) / inputPower));
        std::printf("converter_holdback_%s %.2f ms\n", device.name, kept.mostHeldBackMs);
    }
}
