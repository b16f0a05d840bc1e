#include "platform/qt/SoundFile.h"
#include "unit/platform/qt/TestSound.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

class SoundFileTest : public ::testing::Test {
protected:
    static int peak(const SoundClip& clip) {
        std::vector<std::int16_t> samples(static_cast<std::size_t>(clip.samples.size()) / 2);
        std::memcpy(samples.data(), clip.samples.constData(), samples.size() * 2);
        int result = 0;
        for (const std::int16_t sample : samples) {
            result = std::max(result, std::abs(static_cast<int>(sample)));
        }
        return result;
    }

    QTemporaryDir directory;
    QString path = directory.filePath(u"sönd.mp3"_s);
};

} // namespace

TEST_F(SoundFileTest, AnMp3IsDecoded) {
    writeTone(path, mp3Format, 0.5);
    const auto clip = readSoundFile(path);
    ASSERT_TRUE(clip);
    EXPECT_EQ(clip->sampleRate, 44100);
    EXPECT_EQ(clip->channelCount, 1);
    // The encoding rounds the length up to its blocks and the samples a little.
    EXPECT_NEAR(static_cast<double>(clip->samples.size()) / 2 / 44100, 0.5, 0.06);
    EXPECT_NEAR(peak(*clip), 16384, 800);
}

TEST_F(SoundFileTest, AWaveFileIsDecodedToItsSamples) {
    writeTone(path, wavFormat, 0.1, 0.25, 22050, 2);
    const auto clip = readSoundFile(path);
    ASSERT_TRUE(clip);
    EXPECT_EQ(clip->sampleRate, 22050);
    EXPECT_EQ(clip->channelCount, 2);
    EXPECT_EQ(clip->samples.size(), 2205 * 2 * 2);
    EXPECT_NEAR(peak(*clip), 8192, 2);
}

TEST_F(SoundFileTest, WhatIsNoSoundIsAbsent) {
    EXPECT_FALSE(readSoundFile(path)) << "a missing file";
    EXPECT_FALSE(readSoundFile(directory.path())) << "a directory";
    EXPECT_FALSE(readSoundFile(u"/dev/zero"_s)) << "a device";
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_FALSE(readSoundFile(path)) << "an empty file";
    file.write(QByteArray("no sound at all ").repeated(1000));
    file.close();
    EXPECT_FALSE(readSoundFile(path)) << "a text";
}

TEST_F(SoundFileTest, OnlyShortSoundsAreTaken) {
    writeTone(path, wavFormat, 0);
    EXPECT_FALSE(readSoundFile(path));
    writeTone(path, wavFormat, 9.5, 0.5, 8000);
    EXPECT_TRUE(readSoundFile(path));
    writeTone(path, wavFormat, 10, 0.5, 8000);
    EXPECT_FALSE(readSoundFile(path));
}

TEST_F(SoundFileTest, AFileCutAnywhereIsAShorterSoundOrNone) {
    writeTone(path, mp3Format, 0.3);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const qsizetype whole = readSoundFile(path).value().samples.size();
    for (qint64 size = file.size() - 1; size >= 0; size -= 37) {
        ASSERT_TRUE(file.resize(size));
        if (const auto clip = readSoundFile(path)) {
            EXPECT_LE(clip->samples.size(), whole) << size;
            EXPECT_GT(clip->samples.size(), 0) << size;
        }
    }
}

TEST_F(SoundFileTest, TheSoundsOfTheProgramAreShortAndNotLoud) {
    for (const char* name : {"ui-sound", "ui-pop", "vinyl-stop"}) {
        const auto clip =
            readSoundFile(QStringLiteral(QUORVIN_SOUNDS "/%1.mp3").arg(QLatin1String(name)));
        ASSERT_TRUE(clip.has_value()) << name;
        const auto frames = static_cast<double>(clip->samples.size()) / 2 / clip->channelCount;
        EXPECT_LT(frames / clip->sampleRate, 0.6) << name;
        EXPECT_LT(peak(*clip), 32767 * 0.8) << name;
        EXPECT_GT(peak(*clip), 32767 * 0.3) << name;
    }
}
