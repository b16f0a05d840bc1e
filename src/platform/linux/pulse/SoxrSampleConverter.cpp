#include "platform/linux/pulse/SoxrSampleConverter.h"

#include <numeric>

#include <soxr.h>

namespace quorvin {

namespace {

// What a take loses at its end is half the filter and one block of its transform. The recipe's own
// transition, 0.913 to 1 of the lower Nyquist frequency, costs 34 ms at 48 kHz however small the
// transforms are made. A transition laid evenly about that frequency keeps the recipe's precision,
// makes the filter a third as long and so the block a quarter: at 16 kHz speech is flat up to
// 7 kHz, and only what lies between 8 and 9 kHz can leave a trace, above 7 kHz.
constexpr double passbandEnd = 0.875;
constexpr double stopbandBegin = 2 - passbandEnd;

// The smallest that the library takes; it enlarges them to what the filter needs.
constexpr unsigned log2TransformSize = 8;

} // namespace

void SoxrSampleConverter::Deleter::operator()(soxr* resampler) const {
    soxr_delete(resampler);
}

std::unique_ptr<SoxrSampleConverter> SoxrSampleConverter::make(const AudioFormat& from,
                                                               const AudioFormat& to) {
    const bool folds = to.channelCount == 1;
    if (!(from.sampleRate > 0) || !(to.sampleRate > 0) || from.channelCount == 0 ||
        (from.channelCount != to.channelCount && !folds)) {
        return nullptr;
    }
    soxr_quality_spec_t quality = soxr_quality_spec(SOXR_VHQ, 0);
    quality.passband_end = passbandEnd;
    quality.stopband_begin = stopbandBegin;
    soxr_runtime_spec_t runtime = soxr_runtime_spec(1);
    runtime.log2_min_dft_size = log2TransformSize;
    runtime.log2_large_dft_size = log2TransformSize;
    const soxr_io_spec_t interleaved = soxr_io_spec(SOXR_FLOAT32_I, SOXR_FLOAT32_I);
    soxr_error_t error = nullptr;
    Resampler resampler(soxr_create(from.sampleRate, to.sampleRate, to.channelCount, &error,
                                    &interleaved, &quality, &runtime));
    if (!resampler || error) {
        return nullptr;
    }
    return std::unique_ptr<SoxrSampleConverter>(
        new SoxrSampleConverter(std::move(resampler), from.channelCount, to.channelCount));
}

SoxrSampleConverter::SoxrSampleConverter(Resampler resampler, std::size_t inputChannels,
                                         std::size_t outputChannels)
    : m_resampler(std::move(resampler))
    , m_inputChannels(inputChannels)
    , m_outputChannels(outputChannels) {}

std::size_t SoxrSampleConverter::convert(std::span<const float> input, std::span<float> output) {
    const std::span<const float> samples =
        m_inputChannels == m_outputChannels ? input : fold(input);
    // A null pointer would mean something else than an empty buffer: the end of the stream.
    float nothing = 0;
    std::size_t written = 0;
    // Without a place to report the frames used, the library uses all of them; what finds no room
    // in `output` stays inside it.
    const soxr_error_t error = soxr_process(
        m_resampler.get(), samples.empty() ? &nothing : samples.data(),
        samples.size() / m_outputChannels, nullptr, output.empty() ? &nothing : output.data(),
        output.size() / m_outputChannels, &written);
    if (error) {
        throw SampleConverterError(error);
    }
    return written;
}

std::span<const float> SoxrSampleConverter::fold(std::span<const float> input) {
    m_mono.resize(input.size() / m_inputChannels);
    for (float& sample : m_mono) {
        const auto frame = input.first(m_inputChannels);
        sample =
            std::accumulate(frame.begin(), frame.end(), 0.0F) / static_cast<float>(m_inputChannels);
        input = input.subspan(m_inputChannels);
    }
    return m_mono;
}

} // namespace quorvin
