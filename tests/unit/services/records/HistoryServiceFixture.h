#pragma once

#include "services/records/HistoryService.h"
#include "support/VirtualScheduler.h"
#include "support/fakes/FakeApplicationBundle.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace quorvin::testing {

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

/// A history in a directory of its own, and a clock that the test turns.
class HistoryServiceTest : public ::testing::Test {
protected:
    HistoryServiceTest() { bundle.applicationSupport = directory.filePath(QStringLiteral("data")); }

    [[nodiscard]] QString dataDirectory() const {
        return *bundle.applicationSupport + QStringLiteral("/quorvin");
    }
    [[nodiscard]] QString databasePath() const {
        return dataDirectory() + QStringLiteral("/history.db");
    }
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
            history.add(QString::number(i), QStringLiteral("en"), 1.0, QString());
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
    QTemporaryDir directory{QDir(QStringLiteral("/dev/shm")).exists()
                                ? QStringLiteral("/dev/shm/quorvin-XXXXXX")
                                : QDir::tempPath() + QStringLiteral("/quorvin-XXXXXX")};
    FakeApplicationBundle bundle;
    VirtualScheduler scheduler;
};

} // namespace quorvin::testing
