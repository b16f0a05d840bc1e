#include "platform/linux/freedesktop/XdgApplicationBundle.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

class XdgApplicationBundleTest : public ::testing::Test {
protected:
    XdgApplicationBundleTest() {
        qputenv("HOME", "/home/somebody");
        qunsetenv("XDG_DATA_HOME");
        qunsetenv("XDG_CONFIG_HOME");
    }

    /// The bundle's version when its file for it holds this.
    [[nodiscard]] std::optional<QString> versionFrom(const QByteArray& contents) const {
        writeResource(u"version"_s, contents);
        return XdgApplicationBundle({}, prefix.filePath(u"bin"_s)).version();
    }
    QString writeResource(const QString& name, const QByteArray& contents = {}) const {
        QDir(prefix.path()).mkpath(u"share/quorvin"_s);
        QFile file(prefix.filePath(u"share/quorvin/"_s + name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
        return file.fileName();
    }

    QTemporaryDir prefix;
    XdgApplicationBundle bundle{u"https://updates.test/path"_s, prefix.filePath(u"bin"_s)};
};

} // namespace

TEST_F(XdgApplicationBundleTest, TheVersionStandsInAFileOfTheBundle) {
    EXPECT_EQ(versionFrom("1.10.0\n"), u"1.10.0"_s);
    EXPECT_EQ(versionFrom(" 2.0 \r\nnot this line\n"), u"2.0"_s);
    EXPECT_EQ(versionFrom("3"), u"3"_s);
}

TEST_F(XdgApplicationBundleTest, ABundleThatNamesNoVersionHasNone) {
    EXPECT_EQ(bundle.version(), std::nullopt);
    EXPECT_EQ(versionFrom(""), std::nullopt);
    EXPECT_EQ(versionFrom(" \n1.0\n"), std::nullopt);
}

TEST_F(XdgApplicationBundleTest, AVersionWithoutAnEndIsCut) {
    EXPECT_LE(versionFrom(QByteArray(1'000'000, '1')).value_or(u""_s).size(), 64);
}

TEST_F(XdgApplicationBundleTest, TheVersionIsThatOfTheStartEvenWhenTheFilesAreReplaced) {
    writeResource(u"version"_s, "1.0");
    const XdgApplicationBundle running({}, prefix.filePath(u"bin"_s));
    EXPECT_EQ(versionFrom("2.0"), u"2.0"_s);
    EXPECT_EQ(running.version(), u"1.0"_s);
}

TEST_F(XdgApplicationBundleTest, TheBuildTreeIsABundleOfItsVersion) {
    EXPECT_EQ(XdgApplicationBundle({}, QStringLiteral(BUILD_TREE "/bin")).version(),
              QStringLiteral(EXPECTED_VERSION));
}

TEST_F(XdgApplicationBundleTest, TheUpdateEndpointIsWhatTheBuildSays) {
    EXPECT_EQ(bundle.updateEndpoint(), u"https://updates.test/path");
}

TEST_F(XdgApplicationBundleTest, ResourcesStandBesideTheDirectoryOfTheProgram) {
    EXPECT_EQ(bundle.resource(u"ui-pop"_s, u"mp3"_s), std::nullopt);
    const QString path = writeResource(u"ui-pop.mp3"_s);
    EXPECT_EQ(bundle.resource(u"ui-pop"_s, u"mp3"_s), path);
    EXPECT_EQ(bundle.resource(u"ui-pop"_s, u"wav"_s), std::nullopt);
}

TEST_F(XdgApplicationBundleTest, TheBundleIsTheDirectoryAboveThatOfTheProgram) {
    const auto bundlePath = [](const QString& executableDirectory) {
        return XdgApplicationBundle({}, executableDirectory).bundlePath();
    };
    EXPECT_EQ(bundlePath(u"/home/me/My Apps/Quorvin.app/bin"_s), u"/home/me/My Apps/Quorvin.app");
    EXPECT_EQ(bundlePath(u"/usr/local/bin"_s), u"/usr/local");
    // A directory further up may be of that name and hold much else.
    EXPECT_EQ(bundlePath(u"/home/me/sources.app/build/bin"_s), u"/home/me/sources.app/build");
}

TEST_F(XdgApplicationBundleTest, ADirectoryOfTheUsersIsWritable) {
    EXPECT_TRUE(bundle.isWritable(prefix.path()));
    EXPECT_FALSE(bundle.isWritable(prefix.filePath(u"missing"_s)));
    QFile file(prefix.filePath(u"file"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_FALSE(bundle.isWritable(file.fileName()));
}

TEST_F(XdgApplicationBundleTest, ADirectoryThatIsLockedIsNot) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    constexpr auto readAndEnter =
        QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;
    EXPECT_EXIT(
        {
            QFile::setPermissions(prefix.path(), readAndEnter);
            // No permission stops the one who may do everything.
            const bool isBound = geteuid() != 0 || setuid(65534) == 0;
            _exit(isBound && !bundle.isWritable(prefix.path()) ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(XdgApplicationBundleTest, TheUsersDirectoriesFollowTheHome) {
    EXPECT_EQ(bundle.homeDirectory(), u"/home/somebody"_s);
    EXPECT_EQ(bundle.applicationSupportDirectory(), u"/home/somebody/.local/share"_s);
    EXPECT_EQ(settingsFilePath(), u"/home/somebody/.config/quorvin/settings.json"_s);
}

TEST_F(XdgApplicationBundleTest, TheUsersDirectoriesMayBeElsewhere) {
    qputenv("XDG_DATA_HOME", "/data");
    qputenv("XDG_CONFIG_HOME", "/configuration");
    EXPECT_EQ(bundle.applicationSupportDirectory(), u"/data"_s);
    EXPECT_EQ(settingsFilePath(), u"/configuration/quorvin/settings.json"_s);
}

TEST_F(XdgApplicationBundleTest, TemporaryFilesGoWhereTheUserWantsThem) {
    qputenv("TMPDIR", prefix.path().toLocal8Bit());
    EXPECT_EQ(bundle.temporaryDirectory(), prefix.path());
    const QByteArray missing = prefix.filePath(u"missing"_s).toLocal8Bit();
    for (const QByteArray& unusable : {missing, QByteArray()}) {
        qputenv("TMPDIR", unusable);
        EXPECT_EQ(bundle.temporaryDirectory(), u"/tmp"_s) << unusable.toStdString();
    }
    qunsetenv("TMPDIR");
    EXPECT_EQ(bundle.temporaryDirectory(), u"/tmp"_s);
}

TEST_F(XdgApplicationBundleTest, TheProcessIsThisOne) {
    EXPECT_EQ(bundle.processIdentifier(), getpid());
    EXPECT_GE(bundle.processorCount(), 1);
}
