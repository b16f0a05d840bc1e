#include "HistoryServiceFixture.h"
#include "services/records/HistoryError.h"

#include <functional>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

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
