#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>

namespace quorvin {

/// Linear PCM in 32-bit floats, channels interleaved. `sampleRate` in hertz.
struct AudioFormat {
    double sampleRate = 0;
    std::uint32_t channelCount = 0;

    bool operator==(const AudioFormat&) const = default;
};

/// A buffer that a converter could not convert.
class SampleConverterError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Streaming conversion of rate and channel count. Keeps its state from call to call and is never
/// told that the stream ends, so the last few milliseconds of a stream stay inside. One thread at a
/// time.
class SampleConverter {
public:
    SampleConverter() = default;
    SampleConverter(const SampleConverter&) = delete;
    SampleConverter& operator=(const SampleConverter&) = delete;
    virtual ~SampleConverter() = default;

    /// Takes in all of `input` (whole frames, interleaved, in the format converted from) and writes
    /// as many frames as are ready and `output` (in the format converted to) has room for. What
    /// finds no room waits for the next call. Returns the number of frames written. Allocates
    /// nothing in the steady state. Throws SampleConverterError.
    virtual std::size_t convert(std::span<const float> input, std::span<float> output) = 0;
};

} // namespace quorvin
