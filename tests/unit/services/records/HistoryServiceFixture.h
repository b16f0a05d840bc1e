#pragma once

#include "services/records/HistoryService.h"
#include "support/OtherProgram.h"
#include "support/VirtualScheduler.h"
#include "support/fakes/FakeApplicationBundle.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>

#include <gtest/gtest.h>

namespace quorvin::testing {

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
            OtherProgram(databasePath()).moveTimes("-1 minute");
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
