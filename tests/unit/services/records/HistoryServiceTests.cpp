#include "services/records/HistoryError.h"
#include "services/records/HistoryService.h"
#include "support/LogCapture.h"
#include "support/VirtualScheduler.h"
#include "support/fakes/FakeApplicationBundle.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdlib>
#include <ctime>
#include <functional>
#include <limits>
#include <memory>

#include <gmock/gmock.h>
#include <sqlite3.h>
#include <sys/stat.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::FakeApplicationBundle;
using quorvin::testing::LogCapture;
using quorvin::testing::VirtualScheduler;

namespace {

/// Another program at the same file.
class OtherProgram {
public:
    explicit OtherProgram(const QString& path) {
        EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &m_db), SQLITE_OK);
    }
    ~OtherProgram() { sqlite3_close(m_db); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    /// Runs one statement and returns the first column of its rows.
    QStringList run(const char* sql) {
        QStringList rows;
        const auto collect = [](void* list, int, char** values, char**) {
            static_cast<QStringList*>(list)->append(QString::fromUtf8(values[0]));
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(m_db, sql, collect, &rows, nullptr), SQLITE_OK)
            << sqlite3_errmsg(m_db);
        return rows;
    }

private:
    sqlite3* m_db = nullptr;
};

class HistoryServiceTest : public ::testing::Test {
protected:
    HistoryServiceTest() { bundle.applicationSupport = directory.filePath(u"data"_s); }

    [[nodiscard]] QString dataDirectory() const {
        return *bundle.applicationSupport + u"/quorvin"_s;
    }
    [[nodiscard]] QString databasePath() const { return dataDirectory() + u"/history.db"_s; }
    std::unique_ptr<HistoryService> open() const {
        return std::make_unique<HistoryService>(bundle, scheduler);
    }
    static void write(const QString& path, const QByteArray& bytes) {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    /// Stores "1" to "count", a minute apart.
    void addAMinuteApart(HistoryService& history, int count) {
        for (int i = 1; i <= count; ++i) {
            // Whatever is there becomes a minute older.
            OtherProgram(databasePath())
                .run("UPDATE history SET created_at = datetime(created_at, '-1 minute')");
            history.add(QString::number(i), u"en"_s, 1.0, QString());
        }
    }
    static QStringList texts(const QList<HistoryEntry>& entries) {
        QStringList result;
        for (const HistoryEntry& entry : entries) {
            result.append(entry.text);
        }
        return result;
    }

    // In memory where there is such a place: SQLite waits for the disk at every write.
    QTemporaryDir directory{QDir(u"/dev/shm"_s).exists() ? u"/dev/shm/quorvin-XXXXXX"_s
                                                         : QDir::tempPath() + u"/quorvin-XXXXXX"_s};
    FakeApplicationBundle bundle;
    VirtualScheduler scheduler;
};

void expectError(const std::function<void()>& operation, HistoryError::Case errorCase,
                 const char* message) {
    try {
        operation();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const HistoryError& error) {
        EXPECT_EQ(error.errorCase(), errorCase);
        EXPECT_STREQ(error.what(), message);
    }
}

} // namespace

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

TEST_F(HistoryServiceTest, ADirectoryThatCannotBeMadeIsAnError) {
    write(*bundle.applicationSupport, "a file");
    expectError([&] { open(); }, HistoryError::Case::directoryCreationFailed,
                "Failed to create data directory: Not a directory");
}

TEST_F(HistoryServiceTest, AFileInPlaceOfTheDirectoryIsAnError) {
    write(dataDirectory(), "a file");
    expectError([&] { open(); }, HistoryError::Case::directoryCreationFailed,
                "Failed to create data directory: Not a directory");
}

TEST_F(HistoryServiceTest, ADirectoryInPlaceOfTheDatabaseIsAnError) {
    ASSERT_TRUE(QDir().mkpath(databasePath()));
    expectError([&] { open(); }, HistoryError::Case::databaseOpenFailed,
                "Failed to open history database: unable to open database file");
}

TEST_F(HistoryServiceTest, ADamagedDatabaseIsAnErrorAndStays) {
    const QByteArray bytes = QByteArray("not a database at all ").repeated(100);
    write(databasePath(), bytes);
    expectError([&] { open(); }, HistoryError::Case::execFailed,
                "Failed to execute SQL: file is not a database");
    QFile file(databasePath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), bytes);
}

TEST_F(HistoryServiceTest, ADatabaseCutAnywhereOpensOrIsAnError) {
    {
        const auto history = open();
        addAMinuteApart(*history, 20);
    }
    QFile whole(databasePath());
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray bytes = whole.readAll();
    int opened = 0;
    int refused = 0;
    for (qsizetype length = 0; length < bytes.size(); length += 61) {
        write(databasePath(), bytes.first(length));
        try {
            const auto history = open();
            history->add(u"t"_s, u"en"_s, 1.0, QString());
            EXPECT_FALSE(history->recentEntries(50).isEmpty());
            ++opened;
        } catch (const HistoryError&) {
            ++refused;
        }
    }
    EXPECT_GT(opened, 0); // the empty file at least
    EXPECT_GT(refused, 0);
}

TEST_F(HistoryServiceTest, ALockedDatabaseIsAnErrorAtOnceAndOnlyWhileItIsLocked) {
    const auto history = open();
    history->add(u"before"_s, u"en"_s, 1.0, QString());
    OtherProgram other(databasePath());
    other.run("BEGIN EXCLUSIVE");
    const auto locked = "Failed to execute SQL: database is locked";
    expectError([&] { history->add(u"t"_s, u"en"_s, 1.0, QString()); },
                HistoryError::Case::execFailed, locked);
    expectError([&] { history->deleteEntry(1); }, HistoryError::Case::execFailed, locked);
    expectError([&] { history->clear(); }, HistoryError::Case::execFailed, locked);
    expectError([&] { static_cast<void>(history->recentEntries(50)); },
                HistoryError::Case::execFailed, locked);
    expectError([&] { open(); }, HistoryError::Case::execFailed, locked);
    other.run("COMMIT");
    history->add(u"after"_s, u"en"_s, 1.0, QString());
    EXPECT_EQ(history->recentEntries(50).size(), 2);
}

TEST_F(HistoryServiceTest, AReaderBesideKeepsWritesOutOnly) {
    const auto history = open();
    history->add(u"before"_s, u"en"_s, 1.0, QString());
    OtherProgram other(databasePath());
    other.run("BEGIN; SELECT * FROM history");
    expectError([&] { history->add(u"t"_s, u"en"_s, 1.0, QString()); },
                HistoryError::Case::execFailed, "Failed to execute SQL: database is locked");
    EXPECT_EQ(texts(history->recentEntries(50)), QStringList{u"before"_s});
}

TEST_F(HistoryServiceTest, AVanishedFileIsAnErrorOfEveryWrite) {
    const auto history = open();
    ASSERT_TRUE(QFile::remove(databasePath()));
    expectError([&] { history->add(u"t"_s, u"en"_s, 1.0, QString()); },
                HistoryError::Case::execFailed,
                "Failed to execute SQL: attempt to write a readonly database");
    EXPECT_TRUE(history->recentEntries(50).isEmpty());
}

TEST_F(HistoryServiceTest, ATableThatWasDroppedIsAnErrorOfPreparing) {
    const auto history = open();
    OtherProgram(databasePath()).run("DROP TABLE history");
    // It is noticed when the first statement runs, and from then on when one is prepared.
    expectError([&] { history->deleteEntry(1); }, HistoryError::Case::execFailed,
                "Failed to execute SQL: no such table: history");
    const auto missing = "Failed to prepare SQL statement: no such table: history";
    expectError([&] { history->add(u"t"_s, u"en"_s, 1.0, QString()); },
                HistoryError::Case::prepareFailed, missing);
    expectError([&] { history->deleteEntry(1); }, HistoryError::Case::prepareFailed, missing);
    expectError([&] { static_cast<void>(history->recentEntries(1)); },
                HistoryError::Case::prepareFailed, missing);
    expectError([&] { history->clear(); }, HistoryError::Case::execFailed,
                "Failed to execute SQL: no such table: history");
}

TEST_F(HistoryServiceTest, AFailedTrimIsForgiven) {
    const auto history = open();
    addAMinuteApart(*history, 20);
    OtherProgram(databasePath())
        .run("CREATE TRIGGER keep BEFORE DELETE ON history BEGIN SELECT raise(ABORT, 'no'); END");
    addAMinuteApart(*history, 1);
    EXPECT_EQ(history->recentEntries(50).size(), 21);
    OtherProgram(databasePath()).run("DROP TRIGGER keep");
    addAMinuteApart(*history, 1);
    EXPECT_EQ(history->recentEntries(50).size(), 20);
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
