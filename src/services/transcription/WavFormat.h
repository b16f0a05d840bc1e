#pragma once

#include <QByteArray>

#include <span>

namespace quorvin {

/// Samples per second of every take and of its file.
inline constexpr int wavSampleRate = 16000;

/// The image of a WAV file of 16 kHz mono samples: 44 bytes of header, then one signed 16-bit
/// integer each, little-endian throughout (RIFF, PCM). A sample is limited to -1.0 to 1.0, scaled
/// by 32767 and truncated toward zero, so -32768 never occurs. More samples than a 32-bit size in
/// bytes can tell, 37 hours, end the program. Any thread.
[[nodiscard]] QByteArray createWAVData(std::span<const float> samples);

} // namespace quorvin
