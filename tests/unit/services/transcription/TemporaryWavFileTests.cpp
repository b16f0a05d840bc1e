#include "services/transcription/TemporaryWavFile.h"
#include "support/SmallDisk.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <optional>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::SmallDisk;

namespace {

mode_t modeOf(const QString& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.toUtf8().constData(), &status), 0);
    return status.st_mode & 07777;
}

} // namespace

TEST(TemporaryWavFile, HoldsTheBytesAndIsGoneWithItsObject) {
    const QTemporaryDir directory;
    std::optional<TemporaryWavFile> wav(std::in_place, directory.path(), "take"_ba);
    const QString path = wav->path();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "take"_ba);
    wav.reset();
    EXPECT_FALSE(QFile::exists(path));
}

TEST(TemporaryWavFile, OnlyItsUserMayReadOrWriteIt) {
    const QTemporaryDir directory;
    const mode_t before = ::umask(0);
    const TemporaryWavFile wav(directory.path(), "take"_ba);
    ::umask(before);
    EXPECT_EQ(modeOf(wav.path()), 0600U);
}

TEST(TemporaryWavFile, IsNamedByAnUpperCaseUuid) {
    const QTemporaryDir directory;
    const TemporaryWavFile first(directory.path(), {});
    const TemporaryWavFile second(directory.path(), {});
    const QRegularExpression pattern(
        u"^%1/quorvin_[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\.wav$"_s.arg(directory.path()));
    EXPECT_TRUE(pattern.match(first.path()).hasMatch()) << qPrintable(first.path());
    EXPECT_NE(first.path(), second.path());
}

TEST(TemporaryWavFile, AMissingDirectoryIsTold) {
    const QTemporaryDir directory;
    try {
        const TemporaryWavFile wav(directory.filePath(u"missing"_s), "take"_ba);
        FAIL() << "no error";
    } catch (const FileWriteError& error) {
        EXPECT_STREQ(error.what(), "No such file or directory");
    }
}

TEST(TemporaryWavFile, AFullDiskIsToldAndLeavesNoHalfFile) {
    const QTemporaryDir directory;
    const SmallDisk disk(1000);
    EXPECT_THROW(TemporaryWavFile(directory.path(), QByteArray(5000, 'x')), FileWriteError);
    EXPECT_TRUE(QDir(directory.path()).isEmpty());
}

TEST(TemporaryWavFile, DeletingAFileThatIsGoneAlreadyIsNoError) {
    const QTemporaryDir directory;
    const TemporaryWavFile wav(directory.path(), "take"_ba);
    EXPECT_TRUE(QFile::remove(wav.path()));
}
