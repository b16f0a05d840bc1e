#include "platform/qt/JsonUserDefaults.h"
#include "support/LogCapture.h"
#include "support/SmallDisk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <csignal>
#include <limits>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::LogCapture;
using quorvin::testing::SmallDisk;

namespace {

class JsonUserDefaultsTest : public ::testing::Test {
protected:
    static QByteArray read(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
        return file.readAll();
    }
    static QJsonObject readObject(const QString& path) {
        return QJsonDocument::fromJson(read(path)).object();
    }
    static void write(const QString& path, const QByteArray& bytes) {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    static unsigned mode(const QString& path) {
        struct stat status {};
        EXPECT_EQ(stat(qUtf8Printable(path), &status), 0) << qPrintable(path);
        return status.st_mode & 07777U;
    }
    static QStringList entries(const QString& directory) {
        return QDir(directory).entryList(QDir::AllEntries | QDir::System | QDir::Hidden |
                                         QDir::NoDotAndDotDot);
    }
    /// What was put aside beside `path`, in the order of names.
    static QStringList aside(const QString& path) {
        QStringList paths;
        const QFileInfo info(path);
        for (const QString& name : entries(info.path())) {
            if (name.startsWith(info.fileName() + u".damaged-"_s)) {
                paths.append(info.path() + u'/' + name);
            }
        }
        return paths;
    }

    QTemporaryDir home;
    QString directory = home.filePath(u"config/quorvin"_s);
    QString path = directory + u"/settings.json"_s;
    LogCapture log{"com.quorvin.UserDefaults"};
};

} // namespace

TEST_F(JsonUserDefaultsTest, WithoutAFileThereIsNothingAndNothingIsMade) {
    const JsonUserDefaults defaults(path);
    EXPECT_FALSE(defaults.contains(u"language"_s));
    EXPECT_EQ(defaults.string(u"language"_s), std::nullopt);
    EXPECT_FALSE(QFileInfo::exists(home.filePath(u"config"_s)));
    EXPECT_TRUE(log.take().empty());
}

TEST_F(JsonUserDefaultsTest, ValuesOfEveryTypeOutliveTheObject) {
    {
        JsonUserDefaults defaults(path);
        defaults.setString(u"language"_s, u"Grüße \"🎙️\"\n"_s);
        defaults.setBoolean(u"vadAutoStop"_s, false);
        defaults.setInteger(u"silenceTimeout"_s, std::numeric_limits<int>::min());
        defaults.setDouble(u"windowOpacity"_s, 0.1);
    }
    const JsonUserDefaults defaults(path);
    EXPECT_EQ(defaults.string(u"language"_s), u"Grüße \"🎙️\"\n"_s);
    EXPECT_EQ(defaults.boolean(u"vadAutoStop"_s), false);
    EXPECT_EQ(defaults.number(u"silenceTimeout"_s), std::numeric_limits<int>::min());
    EXPECT_EQ(defaults.number(u"windowOpacity"_s), 0.1);
}

TEST_F(JsonUserDefaultsTest, EachChangeIsOnTheDiskAtOnce) {
    JsonUserDefaults defaults(path);
    defaults.setInteger(u"silenceTimeout"_s, 5);
    EXPECT_EQ(readObject(path), (QJsonObject{{u"silenceTimeout"_s, 5}}));
    defaults.setInteger(u"silenceTimeout"_s, 6);
    EXPECT_EQ(readObject(path), (QJsonObject{{u"silenceTimeout"_s, 6}}));
    EXPECT_EQ(entries(directory), QStringList{u"settings.json"_s});
}

TEST_F(JsonUserDefaultsTest, TheFileIsTheUsersAlone) {
    const mode_t before = umask(0);
    JsonUserDefaults(path).setInteger(u"a"_s, 1);
    umask(before);
    EXPECT_EQ(mode(path), 0600U);
    EXPECT_EQ(mode(directory), 0700U);
}

TEST_F(JsonUserDefaultsTest, AFileThatOthersCouldReadIsClosedToThem) {
    write(path, "{}");
    ASSERT_EQ(chmod(qUtf8Printable(path), 0644), 0);
    JsonUserDefaults(path).setInteger(u"a"_s, 1);
    EXPECT_EQ(mode(path), 0600U);
}

TEST_F(JsonUserDefaultsTest, TypesAreNeverConverted) {
    write(path, R"({"yes": true, "text": "true", "one": 1, "zero": 0.0, "digits": "12",
                    "nothing": null, "list": [1], "object": {"a": 1}})");
    const JsonUserDefaults defaults(path);
    EXPECT_EQ(defaults.boolean(u"yes"_s), true);
    EXPECT_EQ(defaults.string(u"text"_s), u"true"_s);
    EXPECT_EQ(defaults.number(u"one"_s), 1.0);
    EXPECT_EQ(defaults.number(u"zero"_s), 0.0);
    for (const QString& key : {u"text"_s, u"one"_s, u"zero"_s, u"nothing"_s, u"list"_s}) {
        EXPECT_EQ(defaults.boolean(key), std::nullopt) << qPrintable(key);
    }
    for (const QString& key : {u"yes"_s, u"one"_s, u"nothing"_s, u"list"_s, u"object"_s}) {
        EXPECT_EQ(defaults.string(key), std::nullopt) << qPrintable(key);
    }
    for (const QString& key : {u"yes"_s, u"digits"_s, u"nothing"_s, u"list"_s, u"object"_s}) {
        EXPECT_EQ(defaults.number(key), std::nullopt) << qPrintable(key);
    }
}

TEST_F(JsonUserDefaultsTest, AKeyIsPresentWithAValueOfAnyTypeButNull) {
    write(path, R"({"no": false, "empty": "", "zero": 0, "list": [], "nothing": null})");
    const JsonUserDefaults defaults(path);
    for (const QString& key : {u"no"_s, u"empty"_s, u"zero"_s, u"list"_s}) {
        EXPECT_TRUE(defaults.contains(key)) << qPrintable(key);
    }
    EXPECT_FALSE(defaults.contains(u"nothing"_s));
    EXPECT_FALSE(defaults.contains(u"missing"_s));
}

TEST_F(JsonUserDefaultsTest, WhatNobodyAsksForStaysInTheFile) {
    write(path, R"({"future": {"deep": [1, null, "x"]}, "nothing": null, "silenceTimeout": 5})");
    QJsonObject expected = readObject(path);
    JsonUserDefaults(path).setInteger(u"silenceTimeout"_s, 7);
    expected[u"silenceTimeout"_s] = 7;
    EXPECT_EQ(readObject(path), expected);
}

TEST_F(JsonUserDefaultsTest, AnUnchangedValueIsNotWritten) {
    write(path, R"({"a": 1,   "b": "x"})");
    JsonUserDefaults defaults(path);
    defaults.setDouble(u"a"_s, 1.0);
    defaults.setString(u"b"_s, u"x"_s);
    EXPECT_EQ(read(path), QByteArray(R"({"a": 1,   "b": "x"})"));
}

TEST_F(JsonUserDefaultsTest, ValuesThatJsonCannotHoldDoNoHarm) {
    {
        JsonUserDefaults defaults(path);
        defaults.setDouble(u"nan"_s, std::numeric_limits<double>::quiet_NaN());
        defaults.setDouble(u"infinity"_s, std::numeric_limits<double>::infinity());
        defaults.setString(u"surrogate"_s, u"a"_s + QChar(0xd800) + u"b"_s);
        defaults.setString(u"nul"_s, u"a"_s + QChar(0) + u"b"_s);
        defaults.setInteger(u"sound"_s, 1);
    }
    const JsonUserDefaults defaults(path);
    EXPECT_EQ(defaults.number(u"sound"_s), 1.0);
    EXPECT_EQ(defaults.number(u"nan"_s), std::nullopt);
    EXPECT_EQ(defaults.number(u"infinity"_s), std::nullopt);
    EXPECT_EQ(defaults.string(u"nul"_s), u"a"_s + QChar(0) + u"b"_s);
    EXPECT_TRUE(log.take().empty());
}

TEST_F(JsonUserDefaultsTest, ADamagedFileIsKeptBesideAndTheSettingsStartEmpty) {
    write(path, "{\"language\": \"de\",");
    JsonUserDefaults defaults(path);
    EXPECT_FALSE(defaults.contains(u"language"_s));
    EXPECT_FALSE(QFile::exists(path));
    ASSERT_EQ(aside(path).size(), 1);
    EXPECT_THAT(aside(path).front().toStdString(),
                ::testing::MatchesRegex(".*/settings\\.json\\.damaged-[0-9]{8}-[0-9]{6}"));
    EXPECT_EQ(read(aside(path).front()), "{\"language\": \"de\",");
    const auto lines = log.take();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines.front().first, QtCriticalMsg);
    EXPECT_TRUE(lines.front().second.contains(aside(path).front()));

    defaults.setString(u"language"_s, u"fr"_s);
    EXPECT_EQ(readObject(path), (QJsonObject{{u"language"_s, u"fr"_s}}));
    EXPECT_TRUE(log.take().empty());
}

TEST_F(JsonUserDefaultsTest, JsonThatIsNoObjectIsDamage) {
    for (const char* text : {"[1]", "\"x\"", "1", "null", "", " \n", "{}x", "\xff\xfe{}"}) {
        write(path, text);
        const JsonUserDefaults defaults(path);
        EXPECT_FALSE(QFile::exists(path)) << text;
    }
    EXPECT_EQ(aside(path).size(), 8) << "an earlier one was overwritten";
}

TEST_F(JsonUserDefaultsTest, NestingWithoutEndIsDamage) {
    const QByteArray bytes = QByteArray("{\"a\":") + QByteArray(1'000'000, '[');
    write(path, bytes);
    const JsonUserDefaults defaults(path);
    ASSERT_EQ(aside(path).size(), 1);
    EXPECT_EQ(read(aside(path).front()), bytes);
}

TEST_F(JsonUserDefaultsTest, AHugeFileIsNotReadAndKept) {
    write(path, "{}");
    constexpr qint64 size = 20LL * 1024 * 1024 * 1024; // without a block on the disk
    ASSERT_TRUE(QFile::resize(path, size));
    const JsonUserDefaults defaults(path);
    ASSERT_EQ(aside(path).size(), 1);
    EXPECT_EQ(QFileInfo(aside(path).front()).size(), size);
}

TEST_F(JsonUserDefaultsTest, AFileCutAtAnyByteLosesNothing) {
    QByteArray bytes;
    {
        JsonUserDefaults defaults(path);
        defaults.setString(u"language"_s, u"Grüße \\ \" 🎙️"_s);
        defaults.setBoolean(u"vadAutoStop"_s, true);
        defaults.setDouble(u"inputGainDB"_s, -12.25);
        bytes = read(path);
    }
    const QJsonObject whole = QJsonDocument::fromJson(bytes).object();
    ASSERT_EQ(whole.size(), 3);
    for (qsizetype length = 0; length <= bytes.size(); ++length) {
        const QString cut = home.filePath(u"cut-%1/settings.json"_s.arg(length));
        write(cut, bytes.first(length));
        JsonUserDefaults defaults(cut);
        const bool wasRead = defaults.contains(u"language"_s);
        defaults.setInteger(u"silenceTimeout"_s, 5);
        if (wasRead) {
            QJsonObject expected = whole;
            expected[u"silenceTimeout"_s] = 5;
            EXPECT_EQ(readObject(cut), expected) << length;
            EXPECT_TRUE(aside(cut).isEmpty()) << length;
        } else {
            EXPECT_EQ(readObject(cut), (QJsonObject{{u"silenceTimeout"_s, 5}})) << length;
            ASSERT_EQ(aside(cut).size(), 1) << length;
            EXPECT_EQ(read(aside(cut).front()), bytes.first(length)) << length;
        }
        EXPECT_EQ(wasRead, length >= bytes.lastIndexOf('}') + 1) << length;
    }
}

TEST_F(JsonUserDefaultsTest, ADirectoryInPlaceOfTheFileIsMovedAside) {
    write(path + u"/inside"_s, "bytes");
    JsonUserDefaults defaults(path);
    defaults.setInteger(u"a"_s, 1);
    EXPECT_EQ(readObject(path), (QJsonObject{{u"a"_s, 1}}));
    ASSERT_EQ(aside(path).size(), 1);
    EXPECT_EQ(read(aside(path).front() + u"/inside"_s), "bytes");
    EXPECT_EQ(log.take().size(), 1U);
}

TEST_F(JsonUserDefaultsTest, APipeInPlaceOfTheFileIsMovedAsideUnread) {
    ASSERT_TRUE(QDir().mkpath(directory));
    ASSERT_EQ(mkfifo(qUtf8Printable(path), 0600), 0);
    JsonUserDefaults defaults(path);
    defaults.setInteger(u"a"_s, 1);
    EXPECT_EQ(readObject(path), (QJsonObject{{u"a"_s, 1}}));
    EXPECT_EQ(aside(path).size(), 1);
}

TEST_F(JsonUserDefaultsTest, AReadOnlyFileIsReadAndNeverReplaced) {
    const QByteArray bytes = R"({"silenceTimeout": 5})";
    write(path, bytes);
    ASSERT_EQ(chmod(qUtf8Printable(path), 0444), 0);
    JsonUserDefaults defaults(path);
    EXPECT_EQ(defaults.number(u"silenceTimeout"_s), 5.0);
    EXPECT_TRUE(log.take().empty());
    defaults.setInteger(u"silenceTimeout"_s, 7);
    defaults.setString(u"language"_s, u"de"_s);
    EXPECT_EQ(defaults.number(u"silenceTimeout"_s), 7.0);
    EXPECT_EQ(defaults.string(u"language"_s), u"de"_s);
    EXPECT_EQ(read(path), bytes);
    EXPECT_EQ(mode(path), 0444U);
    EXPECT_EQ(entries(directory), QStringList{u"settings.json"_s});
    const auto lines = log.take();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines.front().first, QtCriticalMsg);
}

TEST_F(JsonUserDefaultsTest, ADamagedReadOnlyFileStaysWhereItIs) {
    write(path, "{");
    ASSERT_EQ(chmod(qUtf8Printable(path), 0444), 0);
    JsonUserDefaults defaults(path);
    defaults.setInteger(u"a"_s, 1);
    EXPECT_EQ(defaults.number(u"a"_s), 1.0);
    EXPECT_EQ(read(path), "{");
    EXPECT_EQ(entries(directory), QStringList{u"settings.json"_s});
    EXPECT_EQ(log.take().size(), 1U);
}

TEST_F(JsonUserDefaultsTest, AFailedWriteIsSaidOnceAndLeavesTheOldFileWhole) {
    write(path, R"({"a": 1})");
    JsonUserDefaults defaults(path);
    {
        const SmallDisk disk(4);
        defaults.setInteger(u"a"_s, 2);
        defaults.setInteger(u"b"_s, 3);
    }
    EXPECT_EQ(read(path), R"({"a": 1})");
    EXPECT_EQ(entries(directory), QStringList{u"settings.json"_s});
    EXPECT_EQ(defaults.number(u"a"_s), 2.0);
    EXPECT_EQ(log.take().size(), 1U);

    // With room again, the next change brings the earlier ones along, even one that changes
    // nothing.
    defaults.setInteger(u"b"_s, 3);
    EXPECT_EQ(readObject(path), (QJsonObject{{u"a"_s, 2}, {u"b"_s, 3}}));
}

TEST_F(JsonUserDefaultsTest, ADirectoryThatCannotBeMadeIsSaidOnce) {
    write(home.filePath(u"config"_s), "a file");
    JsonUserDefaults defaults(path);
    defaults.setInteger(u"a"_s, 1);
    defaults.setInteger(u"a"_s, 2);
    EXPECT_EQ(defaults.number(u"a"_s), 2.0);
    EXPECT_EQ(read(home.filePath(u"config"_s)), "a file");
    EXPECT_EQ(log.take().size(), 1U);
}

TEST_F(JsonUserDefaultsTest, ALinkedFileIsWrittenWhereItIs) {
    const QString target = home.filePath(u"dotfiles/settings.json"_s);
    write(target, R"({"a": 1})");
    ASSERT_TRUE(QDir().mkpath(directory));
    ASSERT_EQ(symlink("../../dotfiles/settings.json", qUtf8Printable(path)), 0);
    JsonUserDefaults(path).setInteger(u"b"_s, 2);
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_FALSE(QFileInfo(target).isSymLink());
    EXPECT_EQ(readObject(target), (QJsonObject{{u"a"_s, 1}, {u"b"_s, 2}}));
}

TEST_F(JsonUserDefaultsTest, ALinkToNowhereIsFollowed) {
    const QString target = home.filePath(u"dotfiles/settings.json"_s);
    ASSERT_TRUE(QDir().mkpath(directory));
    ASSERT_TRUE(QFile::link(target, path));
    JsonUserDefaults(path).setInteger(u"a"_s, 1);
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_EQ(readObject(target), (QJsonObject{{u"a"_s, 1}}));
}

TEST_F(JsonUserDefaultsTest, ADamagedFileBehindALinkIsKeptBesideItself) {
    const QString target = home.filePath(u"dotfiles/settings.json"_s);
    write(target, "{");
    ASSERT_TRUE(QDir().mkpath(directory));
    ASSERT_TRUE(QFile::link(target, path));
    JsonUserDefaults(path).setInteger(u"a"_s, 1);
    ASSERT_EQ(aside(target).size(), 1);
    EXPECT_EQ(read(aside(target).front()), "{");
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_EQ(readObject(target), (QJsonObject{{u"a"_s, 1}}));
}

TEST_F(JsonUserDefaultsTest, WhatALinkWronglyLeadsToIsLeftAlone) {
    write(home.filePath(u"precious/file"_s), "bytes");
    ASSERT_TRUE(QDir().mkpath(directory));
    ASSERT_TRUE(QFile::link(home.filePath(u"precious"_s), path));
    JsonUserDefaults(path).setInteger(u"a"_s, 1);
    EXPECT_EQ(read(home.filePath(u"precious/file"_s)), "bytes");
    EXPECT_TRUE(QFileInfo(aside(path).value(0)).isSymLink());
    EXPECT_EQ(readObject(path), (QJsonObject{{u"a"_s, 1}}));
}

TEST_F(JsonUserDefaultsTest, LinksThatGoRoundInCirclesAreMovedAside) {
    ASSERT_TRUE(QDir().mkpath(directory));
    ASSERT_TRUE(QFile::link(directory + u"/other"_s, path));
    ASSERT_TRUE(QFile::link(path, directory + u"/other"_s));
    JsonUserDefaults(path).setInteger(u"a"_s, 1);
    EXPECT_EQ(readObject(path), (QJsonObject{{u"a"_s, 1}}));
    EXPECT_EQ(aside(path).size(), 1);
}
