#pragma once

#include <QFile>
#include <QString>

#include <cmath>
#include <cstdint>
#include <numbers>
#include <stdexcept>
#include <vector>

#include <sndfile.h>

namespace quorvin::testing {

/// Writes a tone of 440 Hz. `format` is a file format of libsndfile, `amplitude` of 1.
inline void writeTone(const QString& path, int format, double seconds, double amplitude = 0.5,
                      int sampleRate = 44100, int channelCount = 1) {
    SF_INFO info{};
    info.samplerate = sampleRate;
    info.channels = channelCount;
    info.format = format;
    SNDFILE* file = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
    if (!file) {
        throw std::runtime_error(sf_strerror(nullptr));
    }
    std::vector<std::int16_t> frame(static_cast<std::size_t>(channelCount));
    for (int i = 0; i < static_cast<int>(seconds * sampleRate); ++i) {
        const double value = amplitude * std::sin(2 * std::numbers::pi * 440 * i / sampleRate);
        frame.assign(frame.size(), static_cast<std::int16_t>(std::lround(value * 32767)));
        sf_writef_short(file, frame.data(), 1);
    }
    sf_close(file);
}

inline constexpr int mp3Format = SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III;
inline constexpr int wavFormat = SF_FORMAT_WAV | SF_FORMAT_PCM_16;

} // namespace quorvin::testing
