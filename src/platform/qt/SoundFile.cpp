#include "platform/qt/SoundFile.h"

#include <QFile>
#include <QFileInfo>

#include <cstdint>
#include <memory>

#include <sndfile.h>

namespace quorvin {

namespace {

constexpr int maxSeconds = 10;

} // namespace

std::optional<SoundClip> readSoundFile(const QString& path) {
    if (!QFileInfo(path).isFile()) {
        return std::nullopt;
    }
    SF_INFO info{};
    const std::unique_ptr<SNDFILE, decltype(&sf_close)> file(
        sf_open(QFile::encodeName(path).constData(), SFM_READ, &info), &sf_close);
    // A broken header may announce any number of frames.
    if (!file || info.frames <= 0 || info.samplerate <= 0 || info.channels <= 0 ||
        info.frames / info.samplerate >= maxSeconds) {
        return std::nullopt;
    }
    const auto frameSize = static_cast<qsizetype>(sizeof(std::int16_t)) * info.channels;
    SoundClip clip{.samples = QByteArray(static_cast<qsizetype>(info.frames) * frameSize, '\0'),
                   .sampleRate = info.samplerate,
                   .channelCount = info.channels};
    const sf_count_t frames = sf_readf_short(
        file.get(), reinterpret_cast<std::int16_t*>(clip.samples.data()), info.frames);
    if (frames <= 0) {
        return std::nullopt;
    }
    clip.samples.truncate(static_cast<qsizetype>(frames) * frameSize);
    return clip;
}

} // namespace quorvin
