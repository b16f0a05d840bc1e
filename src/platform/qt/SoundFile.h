#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quorvin {

/// A sound in memory: signed 16-bit samples, channels interleaved.
struct SoundClip {
    QByteArray samples;
    int sampleRate = 0; ///< hertz
    int channelCount = 0;
};

/// Decodes an MP3, WAV, FLAC or Ogg file of at most ten seconds. Absent when the file is none of
/// these, or is longer or empty.
[[nodiscard]] std::optional<SoundClip> readSoundFile(const QString& path);

} // namespace quorvin
