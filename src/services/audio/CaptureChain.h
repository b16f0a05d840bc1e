#pragma once

#include "platform/SampleConverter.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

/// The way of one tap buffer from the device's format into a take. No threads, no locks.
namespace quorvin {

/// The format of everything stored.
inline constexpr AudioFormat targetFormat{16000.0, 1};

/// Whether there is a device behind this format.
[[nodiscard]] bool isUsable(const AudioFormat& hardware);

/// Whether a device with this format needs a converter to `targetFormat`.
[[nodiscard]] bool needsConversion(const AudioFormat& hardware);

/// Room for one converted buffer, in frames: the exact count, truncated, without a margin. Aborts
/// the program when it exceeds 32 bits, which no device's rate can bring about.
[[nodiscard]] std::uint32_t outputCapacity(double sampleRate, std::uint32_t frameCount);

/// The tap size, from 512 to 2048 and as near to 1024 as can be, whose `outputCapacity` cuts off
/// the least: 1023 at 48 kHz, 882 at 44.1 kHz. Nothing at all at the rates in common use.
[[nodiscard]] std::uint32_t captureFrameCount(double sampleRate);

/// Makes samples in `targetFormat` of what one tap delivers. One thread at a time.
class TapInput {
public:
    /// An empty `converter` where the hardware's format needs one drops every buffer.
    TapInput(AudioFormat hardware, std::unique_ptr<SampleConverter> converter);

    /// `buffer` is in the hardware's format; the result is valid until the next call or, where no
    /// conversion is needed, as long as `buffer`. Empty when the buffer is dropped. Throws
    /// SampleConverterError, which loses this buffer and no other.
    [[nodiscard]] std::span<const float> samples(std::span<const float> buffer);

private:
    [[nodiscard]] std::span<const float> convertBuffer(std::span<const float> buffer);

    AudioFormat m_hardware;
    std::unique_ptr<SampleConverter> m_converter;
    std::vector<float> m_converted;
};

/// What a buffer contributes to a recording.
struct CapturedBuffer {
    /// Before gain, for the spectrum.
    std::span<const float> samples;
    /// After gain, for the take. The gate has no part in it.
    std::span<const float> gainedSamples;
    /// What the level meter moves toward (`meterTarget`).
    double meterTarget = 0;
};

/// Conversion, gain and metering of a recording's buffers. One thread at a time; allocates nothing
/// after the first buffer.
class CaptureChain {
public:
    explicit CaptureChain(TapInput input);

    /// Absent when the buffer is dropped. The spans hold as `TapInput::samples` says. Throws
    /// SampleConverterError.
    [[nodiscard]] std::optional<CapturedBuffer>
    process(std::span<const float> buffer, float gainMultiplier, float noiseGateThreshold);

private:
    TapInput m_input;
    std::vector<float> m_gained;
};

} // namespace quorvin
