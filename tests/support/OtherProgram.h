#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace quorvin::testing {

/// Another program at the history's database.
class OtherProgram {
public:
    explicit OtherProgram(const QString& path) {
        EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &m_db), SQLITE_OK);
    }
    ~OtherProgram() { sqlite3_close(m_db); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    /// Runs one statement and returns the first column of its rows.
    QStringList run(const QByteArray& sql) {
        QStringList rows;
        const auto collect = [](void* list, int, char** values, char**) {
            static_cast<QStringList*>(list)->append(QString::fromUtf8(values[0]));
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(m_db, sql.constData(), collect, &rows, nullptr), SQLITE_OK)
            << sqlite3_errmsg(m_db);
        return rows;
    }

    /// Moves the times of all rows: "-1 minute".
    void moveTimes(const QByteArray& by) {
        run("UPDATE history SET created_at = datetime(created_at, '" + by + "')");
    }

private:
    sqlite3* m_db = nullptr;
};

} // namespace quorvin::testing
