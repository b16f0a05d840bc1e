#pragma once

#include "services/records/HistoryEntry.h"
#include "services/records/HistoryError.h"

#include <QList>
#include <QString>

#include <memory>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace quorvin {

class ApplicationBundle;
class Scheduler;

/// The latest dictated texts, in a small SQLite database: a short memory, not an archive. Every
/// operation throws HistoryError when it fails and leaves the service usable. A database that
/// another process has locked is such a failure at once; nothing waits for it. Main thread only.
class HistoryService {
public:
    /// Opens the database in the application's data directory, and makes both where missing.
    HistoryService(const ApplicationBundle& bundle, const Scheduler& scheduler);
    ~HistoryService();
    HistoryService(const HistoryService&) = delete;
    HistoryService& operator=(const HistoryService&) = delete;

    /// Stores an entry with the present time and forgets all but the newest 20. An empty text is
    /// not stored. `duration` in seconds.
    void add(const QString& text, const QString& language, double duration, const QString& sentTo);

    /// Does nothing when there is no such entry.
    void deleteEntry(qint64 id);

    /// Forgets everything, and gives the space back.
    void clear();

    /// At most `limit` entries, newest first; those of one second are in no particular order. An
    /// entry whose time can't be read counts as made now.
    [[nodiscard]] QList<HistoryEntry> recentEntries(int limit) const;

private:
    struct Close {
        void operator()(sqlite3* database) const;
    };
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

    void open(const QString& path);
    /// The open database, or an error of this case.
    [[nodiscard]] sqlite3* database(HistoryError::Case errorCase) const;
    void exec(const char* sql);
    [[nodiscard]] Statement prepare(const char* sql) const;
    void bindText(const Statement& statement, int parameter, const QByteArray& utf8) const;
    void run(const Statement& statement) const;
    [[nodiscard]] QList<HistoryEntry> readEntries(const Statement& statement) const;
    [[nodiscard]] QDateTime creationTime(const QString& text) const;
    [[nodiscard]] std::string lastMessage() const;

    const Scheduler& m_scheduler;
    std::unique_ptr<sqlite3, Close> m_db;
};

} // namespace quorvin
