#include "services/audio/CaptureChain.h"

#include "services/audio/Metering.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <limits>

namespace quorvin {

namespace {

double exactOutputFrames(double sampleRate, std::uint32_t frameCount) {
    return targetFormat.sampleRate / sampleRate * frameCount;
}

} // namespace

bool isUsable(const AudioFormat& hardware) {
    return hardware.sampleRate > 0 && hardware.channelCount != 0;
}

bool needsConversion(const AudioFormat& hardware) {
    return hardware != targetFormat;
}

std::uint32_t outputCapacity(double sampleRate, std::uint32_t frameCount) {
    const double frames = std::trunc(exactOutputFrames(sampleRate, frameCount));
    if (!(frames <= std::numeric_limits<std::uint32_t>::max())) {
        qFatal("Impossible capacity of a converted buffer: %f frames", frames);
    }
    return static_cast<std::uint32_t>(frames);
}

std::uint32_t captureFrameCount(double sampleRate) {
    constexpr std::uint32_t preferred = 1024;
    constexpr std::uint32_t smallest = preferred / 2;
    constexpr std::uint32_t largest = preferred * 2;
    const auto lossPerFrame = [sampleRate](std::uint32_t frameCount) {
        const double frames = exactOutputFrames(sampleRate, frameCount);
        return (frames - std::trunc(frames)) / frameCount;
    };

    std::uint32_t best = preferred;
    double leastLoss = lossPerFrame(best);
    // Outward, so that the nearest of equals is found first.
    for (std::uint32_t distance = 1; distance <= largest - preferred; ++distance) {
        for (const std::uint32_t candidate : {preferred - distance, preferred + distance}) {
            if (candidate >= smallest && lossPerFrame(candidate) < leastLoss) {
                best = candidate;
                leastLoss = lossPerFrame(candidate);
            }
        }
    }
    return best;
}

TapInput::TapInput(AudioFormat hardware, std::unique_ptr<SampleConverter> converter)
    : m_hardware(hardware), m_converter(std::move(converter)) {}

std::span<const float> TapInput::samples(std::span<const float> buffer) {
    return needsConversion(m_hardware) ? convertBuffer(buffer) : buffer;
}

std::span<const float> TapInput::convertBuffer(std::span<const float> buffer) {
    if (!m_converter) {
        return {};
    }
    const auto frameCount = static_cast<std::uint32_t>(buffer.size() / m_hardware.channelCount);
    const std::uint32_t capacity = outputCapacity(m_hardware.sampleRate, frameCount);
    if (capacity == 0) {
        return {};
    }
    m_converted.resize(capacity);
    const std::size_t written = m_converter->convert(buffer, m_converted);
    return std::span<const float>(m_converted).first(written);
}

CaptureChain::CaptureChain(TapInput input) : m_input(std::move(input)) {}

std::optional<CapturedBuffer> CaptureChain::process(std::span<const float> buffer,
                                                    float gainMultiplier,
                                                    float noiseGateThreshold) {
    CapturedBuffer captured;
    captured.samples = m_input.samples(buffer);
    if (captured.samples.empty()) {
        return std::nullopt;
    }
    captured.gainedSamples = captured.samples;
    if (gainMultiplier != 1.0F) {
        m_gained.resize(captured.samples.size());
        std::transform(captured.samples.begin(), captured.samples.end(), m_gained.begin(),
                       [gainMultiplier](float sample) {
                           return std::clamp(sample * gainMultiplier, -1.0F, 1.0F);
                       });
        captured.gainedSamples = m_gained;
    }
    captured.meterTarget = meterTarget(rms(captured.gainedSamples), noiseGateThreshold);
    return captured;
}

} // namespace quorvin
