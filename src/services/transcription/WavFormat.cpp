#include "services/transcription/WavFormat.h"

#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace quorvin {

namespace {

constexpr qsizetype headerSize = 44;
constexpr std::uint32_t sizeBeyondChunkSize = 8; // the first two fields don't count themselves
constexpr std::uint16_t channelCount = 1;
constexpr std::uint16_t bytesPerSample = 2;
constexpr std::uint16_t pcm = 1;
constexpr float fullScale = 32767.0F;

void writeHeader(QByteArray& wav, std::uint32_t dataSize) {
    QDataStream stream(&wav, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("RIFF", 4);
    stream << static_cast<quint32>(dataSize + headerSize - sizeBeyondChunkSize);
    stream.writeRawData("WAVEfmt ", 8);
    stream << quint32{16} << quint16{pcm} << quint16{channelCount} << quint32{wavSampleRate}
           << quint32{wavSampleRate * channelCount * bytesPerSample}
           << quint16{channelCount * bytesPerSample} << quint16{bytesPerSample * 8};
    stream.writeRawData("data", 4);
    stream << quint32{dataSize};
}

void writeSamples(std::span<const float> samples, char* destination) {
    for (std::size_t i = 0; i < samples.size(); ++i) {
        // In this order of the arguments a NaN becomes -1.0, too.
        const float limited = std::max(-1.0F, std::min(samples[i], 1.0F));
        const auto value = static_cast<std::int16_t>(limited * fullScale);
        qToLittleEndian(value, destination + i * bytesPerSample);
    }
}

} // namespace

QByteArray createWAVData(std::span<const float> samples) {
    constexpr std::uint32_t largestDataSize =
        std::numeric_limits<std::uint32_t>::max() - headerSize + sizeBeyondChunkSize;
    if (samples.size() > largestDataSize / bytesPerSample) {
        qFatal("A take of %zu samples doesn't fit into a WAV file", samples.size());
    }
    const auto dataSize = static_cast<std::uint32_t>(samples.size() * bytesPerSample);
    QByteArray wav;
    wav.reserve(headerSize + dataSize);
    writeHeader(wav, dataSize);
    wav.resize(headerSize + static_cast<qsizetype>(dataSize));
    writeSamples(samples, wav.data() + headerSize);
    return wav;
}

} // namespace quorvin
