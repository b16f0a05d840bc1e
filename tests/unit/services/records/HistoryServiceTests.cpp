#include "HistoryServiceFixture.h"
#include "support/LogCapture.h"

#include <cstdlib>
#include <ctime>
#include <limits>
#include <vector>

#include <gmock/gmock.h>
#include <sys/stat.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

TEST_F(HistoryServiceTest, MakesAPrivateDirectoryAndTheSchema) {
    open();
    struct stat status {};
    ASSERT_EQ(stat(qUtf8Printable(dataDirectory()), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0700U);
    EXPECT_EQ(OtherProgram(databasePath())
                  .run("SELECT sql FROM sqlite_master WHERE name IN "
                       "('history', 'idx_created_at') ORDER BY name"),
              (QStringList{u"CREATE TABLE history (\n    id INTEGER PRIMARY KEY AUTOINCREMENT,\n"
                           "    text TEXT NOT NULL,\n    language TEXT DEFAULT '',\n"
                           "    duration REAL DEFAULT 0,\n"
                           "    created_at DATETIME DEFAULT CURRENT_TIMESTAMP,\n"
                           "    sent_to TEXT DEFAULT ''\n)"_s,
                           u"CREATE INDEX idx_created_at ON history(created_at DESC)"_s}));
}

TEST_F(HistoryServiceTest, ADirectoryThatIsThereStaysAsItIs) {
    ASSERT_TRUE(QDir().mkpath(dataDirectory()));
    const auto permissions = QFileInfo(dataDirectory()).permissions();
    LogCapture log("com.quorvin.HistoryService");
    open();
    EXPECT_EQ(QFileInfo(dataDirectory()).permissions(), permissions);
    for (const auto& [type, line] : log.take()) {
        EXPECT_FALSE(line.startsWith(u"Created"_s)) << qPrintable(line);
    }
}

TEST_F(HistoryServiceTest, WithoutASupportDirectoryTheHomeDirectoryServes) {
    bundle.applicationSupport.reset();
    bundle.home = directory.filePath(u"home"_s);
    open();
    EXPECT_TRUE(QFile::exists(bundle.home + u"/Library/Application Support/quorvin/history.db"_s));
}

TEST_F(HistoryServiceTest, AnEntryReadsBackAsItWasAdded) {
    const auto history = open();
    history->add(u"Grüße, 🎙️"_s, u"de"_s, 2.5, u"Claude"_s);
    const QList<HistoryEntry> entries = history->recentEntries(50);
    ASSERT_EQ(entries.size(), 1);
    const HistoryEntry& entry = entries.front();
    EXPECT_EQ(entry.id, 1);
    EXPECT_EQ(entry.text, u"Grüße, 🎙️"_s);
    EXPECT_EQ(entry.language, u"de"_s);
    EXPECT_EQ(entry.duration, 2.5);
    EXPECT_EQ(entry.sentTo, u"Claude"_s);
    EXPECT_EQ(entry.createdAt.timeSpec(), Qt::UTC);
    EXPECT_LT(std::abs(entry.createdAt.secsTo(QDateTime::currentDateTimeUtc())), 60);
}

TEST_F(HistoryServiceTest, EntriesOutliveTheService) {
    open()->add(u"kept"_s, u"en"_s, 1.0, QString());
    EXPECT_EQ(texts(open()->recentEntries(1)), QStringList{u"kept"_s});
}

TEST_F(HistoryServiceTest, AnEmptyTextIsNotStored) {
    const auto history = open();
    history->add(QString(), u"en"_s, 1.0, u"Claude"_s);
    history->add(u""_s, u"en"_s, 1.0, u"Claude"_s);
    EXPECT_TRUE(history->recentEntries(50).isEmpty());
}

TEST_F(HistoryServiceTest, EmptyFieldsAreStoredAsEmptyTexts) {
    open()->add(u"text"_s, QString(), 0.0, QString());
    EXPECT_EQ(OtherProgram(databasePath())
                  .run("SELECT count(*) FROM history WHERE language = '' AND sent_to = ''"),
              QStringList{u"1"_s});
}

TEST_F(HistoryServiceTest, ATextOfAnyLengthIsStoredWhole) {
    const auto history = open();
    QString text(3'000'000, u'ä');
    text += u"end"_s;
    history->add(text, u"de"_s, 600.0, QString());
    EXPECT_EQ(history->recentEntries(1).front().text, text);
}

TEST_F(HistoryServiceTest, ATextKeepsWhatFollowsANul) {
    const auto history = open();
    const QString text = u"before"_s + QChar(0) + u"after"_s;
    history->add(text, u"e"_s + QChar(0) + u"n"_s, 1.0, u"C"_s + QChar(0));
    const HistoryEntry entry = history->recentEntries(1).front();
    EXPECT_EQ(entry.text, text);
    EXPECT_EQ(entry.language, u"e"_s + QChar(0) + u"n"_s);
    EXPECT_EQ(entry.sentTo, u"C"_s + QChar(0));
}

TEST_F(HistoryServiceTest, TextIsDataAndNeverSql) {
    const auto history = open();
    const QString text = u"'); DROP TABLE history; --"_s;
    history->add(text, text, 1.0, text);
    EXPECT_EQ(history->recentEntries(1).front().text, text);
}

TEST_F(HistoryServiceTest, TheTwentyFirstEntryPushesOutTheOldest) {
    const auto history = open();
    addAMinuteApart(*history, 20);
    EXPECT_EQ(history->recentEntries(50).size(), 20);
    addAMinuteApart(*history, 1);
    const QStringList kept = texts(history->recentEntries(50));
    ASSERT_EQ(kept.size(), 20);
    EXPECT_EQ(kept.front(), u"1"_s); // the newest
    EXPECT_EQ(kept.back(), u"2"_s);  // the first "1" is gone
}

TEST_F(HistoryServiceTest, ALimitOfFiftyGivesTwentyEntriesAtMost) {
    const auto history = open();
    addAMinuteApart(*history, 60);
    EXPECT_EQ(history->recentEntries(50).size(), 20);
    EXPECT_EQ(OtherProgram(databasePath()).run("SELECT count(*) FROM history"),
              QStringList{u"20"_s});
}

TEST_F(HistoryServiceTest, TheNewestComeFirstAndTheLimitCuts) {
    const auto history = open();
    addAMinuteApart(*history, 7);
    EXPECT_EQ(texts(history->recentEntries(5)),
              (QStringList{u"7"_s, u"6"_s, u"5"_s, u"4"_s, u"3"_s}));
    EXPECT_EQ(texts(history->recentEntries(1)), QStringList{u"7"_s});
    EXPECT_TRUE(history->recentEntries(0).isEmpty());
}

TEST_F(HistoryServiceTest, AnUnreadableTimeReadsAsNow) {
    const auto history = open();
    const QDateTime now(QDate(2031, 2, 3), QTime(4, 5, 6), Qt::UTC);
    scheduler.setWallTime(now);
    OtherProgram other(databasePath());
    for (const char* time :
         {"'garbage'", "NULL", "''", "'2025-01-01'", "'2025-13-01 00:00:00'",
          "'2025-01-01 25:00:00'", "'2025-01-01T00:00:00'", "'2025-01-01 00:00:00 '",
          "'2025-01-01 00:00:00.5'", "17", "x'ff00'"}) {
        other.run("DELETE FROM history");
        other.run((std::string("INSERT INTO history (text, created_at) VALUES ('t', ") + time + ")")
                      .c_str());
        const QList<HistoryEntry> entries = history->recentEntries(50);
        ASSERT_EQ(entries.size(), 1) << time;
        EXPECT_EQ(entries.front().createdAt, now) << time;
    }
}

TEST_F(HistoryServiceTest, TimesAreUtcWhateverTheTimeZone) {
    // Half past two on this day does not exist in Berlin.
    qputenv("TZ", "Europe/Berlin");
    tzset();
    const auto history = open();
    OtherProgram(databasePath())
        .run("INSERT INTO history (text, created_at) VALUES ('t', '2025-03-30 02:30:00')");
    const QDateTime time = history->recentEntries(1).front().createdAt;
    EXPECT_EQ(time, QDateTime(QDate(2025, 3, 30), QTime(2, 30), Qt::UTC));
    qunsetenv("TZ");
    tzset();
}

TEST_F(HistoryServiceTest, NullColumnsReadAsEmpty) {
    const auto history = open();
    OtherProgram(databasePath())
        .run("INSERT INTO history (text, language, duration, sent_to) "
             "VALUES ('t', NULL, NULL, NULL)");
    const HistoryEntry entry = history->recentEntries(1).front();
    EXPECT_EQ(entry.text, u"t"_s);
    EXPECT_EQ(entry.language, u""_s);
    EXPECT_EQ(entry.duration, 0.0);
    EXPECT_EQ(entry.sentTo, u""_s);
}

TEST_F(HistoryServiceTest, DeletingTakesOneEntryAndItsIdIsNeverUsedAgain) {
    const auto history = open();
    addAMinuteApart(*history, 3);
    history->deleteEntry(3);
    EXPECT_EQ(texts(history->recentEntries(50)), (QStringList{u"2"_s, u"1"_s}));
    history->add(u"new"_s, u"en"_s, 1.0, QString());
    EXPECT_EQ(history->recentEntries(1).front().id, 4);
}

TEST_F(HistoryServiceTest, DeletingWhatIsNotThereSucceeds) {
    const auto history = open();
    history->add(u"t"_s, u"en"_s, 1.0, QString());
    history->deleteEntry(4711);
    history->deleteEntry(std::numeric_limits<qint64>::min());
    EXPECT_EQ(history->recentEntries(50).size(), 1);
}

TEST_F(HistoryServiceTest, ClearingEmptiesTheTableAndMayBeRepeated) {
    const auto history = open();
    history->add(u"t"_s, u"en"_s, 1.0, QString());
    history->clear();
    EXPECT_TRUE(history->recentEntries(50).isEmpty());
    history->clear();
    EXPECT_TRUE(history->recentEntries(50).isEmpty());
}

TEST_F(HistoryServiceTest, ClearingTakesTheTextsOffTheDisk) {
    const auto history = open();
    history->add(u"unmistakable"_s.repeated(1000), u"en"_s, 1.0, QString());
    history->clear();
    QFile file(databasePath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_FALSE(file.readAll().contains("unmistakable"));
}

TEST_F(HistoryServiceTest, TheLogTellsWhatHappened) {
    LogCapture log("com.quorvin.HistoryService");
    {
        const auto history = open();
        history->add(u"Grüße"_s, u"de"_s, 1.0, u"Claude"_s);
        history->deleteEntry(1);
        history->clear();
    }
    std::vector<LogCapture::Line> expected;
    for (const QString& line :
         {u"Created data directory: "_s + dataDirectory(),
          u"Opening history database: "_s + databasePath(), u"History database ready"_s,
          u"Added to history: 5 chars, lang=de, sent_to=Claude"_s, u"Deleted history entry id=1"_s,
          u"History cleared"_s, u"History database closed"_s}) {
        expected.emplace_back(QtInfoMsg, line);
    }
    EXPECT_EQ(log.take(), expected);
}
