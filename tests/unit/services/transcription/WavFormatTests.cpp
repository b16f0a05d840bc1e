#include "services/transcription/WavFormat.h"

#include <QtEndian>

#include <cstdint>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

using quorvin::createWAVData;

namespace {

std::uint32_t number(const QByteArray& wav, qsizetype offset) {
    return qFromLittleEndian<std::uint32_t>(wav.constData() + offset);
}

std::int16_t sample(const QByteArray& wav, qsizetype index) {
    return qFromLittleEndian<std::int16_t>(wav.constData() + 44 + 2 * index);
}

} // namespace

TEST(WavFormat, TheImageOfAnEmptyTakeIsTheHeaderAlone) {
    EXPECT_EQ(createWAVData({}), QByteArray("RIFF\x24\x00\x00\x00WAVEfmt \x10\x00\x00\x00"
                                            "\x01\x00\x01\x00\x80\x3e\x00\x00\x00\x7d\x00\x00"
                                            "\x02\x00\x10\x00"
                                            "data\x00\x00\x00\x00",
                                            44));
}

TEST(WavFormat, ASecondIs32044Bytes) {
    const QByteArray wav = createWAVData(std::vector<float>(16000, 0.1F));
    EXPECT_EQ(wav.size(), 32044);
    EXPECT_EQ(number(wav, 4), 32036U);
    EXPECT_EQ(number(wav, 40), 32000U);
}

TEST(WavFormat, SamplesAreLittleEndian) {
    const QByteArray wav = createWAVData(std::vector{256.5F / 32767.0F});
    EXPECT_EQ(wav.mid(44), QByteArray("\x00\x01", 2));
}

TEST(WavFormat, SamplesBeyondFullScaleAreLimited) {
    const QByteArray wav = createWAVData(std::vector{1.5F, -1.5F, 1.0F, -1.0F});
    EXPECT_EQ(sample(wav, 0), 32767);
    EXPECT_EQ(sample(wav, 1), -32767);
    EXPECT_EQ(sample(wav, 2), 32767);
    EXPECT_EQ(sample(wav, 3), -32767);
}

TEST(WavFormat, SamplesAreTruncatedTowardZero) {
    const QByteArray wav = createWAVData(
        std::vector{0.99999F, -0.99999F, 0.9F / 32767.0F, -0.9F / 32767.0F, 1.9F / 32767.0F, 0.0F});
    EXPECT_EQ(sample(wav, 0), 32766);
    EXPECT_EQ(sample(wav, 1), -32766);
    EXPECT_EQ(sample(wav, 2), 0);
    EXPECT_EQ(sample(wav, 3), 0);
    EXPECT_EQ(sample(wav, 4), 1);
    EXPECT_EQ(sample(wav, 5), 0);
}

TEST(WavFormat, ValuesThatAreNoNumbersStayWithinFullScale) {
    const float infinity = std::numeric_limits<float>::infinity();
    const QByteArray wav =
        createWAVData(std::vector{infinity, -infinity, std::numeric_limits<float>::quiet_NaN()});
    EXPECT_EQ(sample(wav, 0), 32767);
    EXPECT_EQ(sample(wav, 1), -32767);
    EXPECT_GE(sample(wav, 2), -32767);
}

TEST(WavFormat, EveryPositionOfALongTakeIsEncoded) {
    std::vector<float> samples(1003);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = (static_cast<float>(i) + 0.5F) / 32767.0F;
    }
    const QByteArray wav = createWAVData(samples);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        ASSERT_EQ(sample(wav, static_cast<qsizetype>(i)), static_cast<int>(i));
    }
}

TEST(WavFormatDeathTest, ATakeBeyondThe32BitSizeIsFatal) {
    const float one = 0;
    // Never read: the length alone decides.
    const std::span<const float> tooLong(&one, std::size_t{1} << 31U);
    EXPECT_DEATH((void)createWAVData(tooLong), "2147483648 samples");
}
