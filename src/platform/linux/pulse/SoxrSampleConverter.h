#pragma once

#include "platform/SampleConverter.h"

#include <memory>
#include <vector>

struct soxr;

namespace quorvin {

/// Conversion by libsoxr, in one thread. Many channels become one by their mean.
///
/// At rest it holds back at most 9 ms of what it was given when converting to 16 kHz from 22.05,
/// 24, 44.1, 48, 88.2 or 96 kHz, 13 ms from 32 kHz, 19 ms from 192 kHz and 26 ms from 8 kHz.
class SoxrSampleConverter final : public SampleConverter {
public:
    /// Empty when a rate or a count is 0, or when the channels would change in any other way than
    /// to one.
    [[nodiscard]] static std::unique_ptr<SoxrSampleConverter> make(const AudioFormat& from,
                                                                   const AudioFormat& to);

    std::size_t convert(std::span<const float> input, std::span<float> output) override;

private:
    struct Deleter {
        void operator()(soxr* resampler) const;
    };
    using Resampler = std::unique_ptr<soxr, Deleter>;

    SoxrSampleConverter(Resampler resampler, std::size_t inputChannels, std::size_t outputChannels);

    /// The mean of the channels of each frame.
    std::span<const float> fold(std::span<const float> input);

    Resampler m_resampler;
    std::size_t m_inputChannels;
    std::size_t m_outputChannels;
    std::vector<float> m_mono;
};

} // namespace quorvin
