#include "services/records/HistoryService.h"

#include "platform/ApplicationBundle.h"
#include "platform/Scheduler.h"
#include "support/Text.h"

#include <QDir>
#include <QLoggingCategory>

#include <filesystem>

#include <sqlite3.h>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(lcHistory, "com.quorvin.HistoryService", QtInfoMsg)

constexpr auto createTable = "CREATE TABLE IF NOT EXISTS history (\n"
                             "    id INTEGER PRIMARY KEY AUTOINCREMENT,\n"
                             "    text TEXT NOT NULL,\n"
                             "    language TEXT DEFAULT '',\n"
                             "    duration REAL DEFAULT 0,\n"
                             "    created_at DATETIME DEFAULT CURRENT_TIMESTAMP,\n"
                             "    sent_to TEXT DEFAULT ''\n"
                             ")";
constexpr auto createIndex =
    "CREATE INDEX IF NOT EXISTS idx_created_at ON history(created_at DESC)";
constexpr auto insertEntry =
    "INSERT INTO history (text, language, duration, sent_to) VALUES (?, ?, ?, ?)";
constexpr auto trimEntries = "DELETE FROM history\n"
                             "WHERE id NOT IN (\n"
                             "    SELECT id FROM history\n"
                             "    ORDER BY created_at DESC\n"
                             "    LIMIT 20\n"
                             ")";
constexpr auto selectEntries = "SELECT id, text, language, duration, created_at, sent_to\n"
                               "FROM history\n"
                               "ORDER BY created_at DESC\n"
                               "LIMIT ?";

QString dataDirectory(const ApplicationBundle& bundle) {
    const QString support = bundle.applicationSupportDirectory().value_or(
        bundle.homeDirectory() + u"/Library/Application Support"_s);
    return support + u"/quorvin"_s;
}

/// What is dictated is nobody else's business, so the directory is for the user alone.
void createDirectory(const QString& directory) {
    namespace fs = std::filesystem;
    const fs::path path = QDir(directory).filesystemPath();
    std::error_code error;
    if (fs::is_directory(path, error)) {
        return;
    }
    if (fs::create_directories(path, error)) {
        fs::permissions(path, fs::perms::owner_all, error);
    }
    if (error) {
        throw HistoryError(HistoryError::Case::directoryCreationFailed, error.message());
    }
    qCInfo(lcHistory, "Created data directory: %s", qUtf8Printable(directory));
}

QString columnText(sqlite3_stmt* statement, int column) {
    // The text first: asking for it settles the encoding that the length is then given in.
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    return QString::fromUtf8(text, sqlite3_column_bytes(statement, column));
}

} // namespace

HistoryService::HistoryService(const ApplicationBundle& bundle, const Scheduler& scheduler)
    : m_scheduler(scheduler) {
    const QString directory = dataDirectory(bundle);
    createDirectory(directory);
    open(directory + u"/history.db"_s);
    exec(createTable);
    exec(createIndex);
    qCInfo(lcHistory, "History database ready");
}

HistoryService::~HistoryService() {
    m_db.reset();
    qCInfo(lcHistory, "History database closed");
}

void HistoryService::add(const QString& text, const QString& language, double duration,
                         const QString& sentTo) {
    if (text.isEmpty()) {
        return;
    }
    // They outlive the statement, which is bound to them without a copy.
    const QByteArray textBytes = text.toUtf8();
    const QByteArray languageBytes = language.toUtf8();
    const QByteArray sentToBytes = sentTo.toUtf8();
    {
        const Statement statement = prepare(insertEntry);
        bindText(statement, 1, textBytes);
        bindText(statement, 2, languageBytes);
        sqlite3_bind_double(statement.get(), 3, duration);
        bindText(statement, 4, sentToBytes);
        run(statement);
    }
    qCInfo(lcHistory, "Added to history: %ld chars, lang=%s, sent_to=%s",
           static_cast<long>(text::characterCount(text)), languageBytes.constData(),
           sentToBytes.constData());
    try {
        exec(trimEntries);
    } catch (const HistoryError&) {
        // The entry is stored; one row too many is mended by the next trim.
    }
}

void HistoryService::deleteEntry(qint64 id) {
    const Statement statement = prepare("DELETE FROM history WHERE id = ?");
    sqlite3_bind_int64(statement.get(), 1, id);
    run(statement);
    qCInfo(lcHistory, "Deleted history entry id=%lld", id);
}

void HistoryService::clear() {
    exec("DELETE FROM history");
    exec("VACUUM");
    qCInfo(lcHistory, "History cleared");
}

QList<HistoryEntry> HistoryService::recentEntries(int limit) const {
    const Statement statement = prepare(selectEntries);
    sqlite3_bind_int(statement.get(), 1, limit);
    return readEntries(statement);
}

void HistoryService::Close::operator()(sqlite3* database) const {
    sqlite3_close(database);
}

void HistoryService::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

void HistoryService::open(const QString& path) {
    qCInfo(lcHistory, "Opening history database: %s", qUtf8Printable(path));
    sqlite3* database = nullptr;
    const int result = sqlite3_open(path.toUtf8().constData(), &database);
    m_db.reset(database); // SQLite gives a handle to close also when it fails
    if (result != SQLITE_OK) {
        const std::string message = m_db ? lastMessage() : "unknown error";
        m_db.reset();
        throw HistoryError(HistoryError::Case::databaseOpenFailed, message);
    }
}

sqlite3* HistoryService::database(HistoryError::Case errorCase) const {
    if (!m_db) {
        throw HistoryError(errorCase, "database not open");
    }
    return m_db.get();
}

void HistoryService::exec(const char* sql) {
    char* text = nullptr;
    const int result =
        sqlite3_exec(database(HistoryError::Case::execFailed), sql, nullptr, nullptr, &text);
    const std::unique_ptr<char, decltype(&sqlite3_free)> message(text, &sqlite3_free);
    if (result != SQLITE_OK) {
        throw HistoryError(HistoryError::Case::execFailed, message ? message.get() : lastMessage());
    }
}

HistoryService::Statement HistoryService::prepare(const char* sql) const {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database(HistoryError::Case::prepareFailed), sql, -1, &statement,
                           nullptr) != SQLITE_OK) {
        throw HistoryError(HistoryError::Case::prepareFailed, lastMessage());
    }
    return Statement(statement);
}

void HistoryService::bindText(const Statement& statement, int parameter,
                              const QByteArray& utf8) const {
    // With its length, since a text may hold a NUL.
    const int result =
        sqlite3_bind_text64(statement.get(), parameter, utf8.constData(),
                            static_cast<sqlite3_uint64>(utf8.size()), SQLITE_STATIC, SQLITE_UTF8);
    if (result != SQLITE_OK) {
        throw HistoryError(HistoryError::Case::execFailed, lastMessage());
    }
}

void HistoryService::run(const Statement& statement) const {
    if (sqlite3_step(statement.get()) != SQLITE_DONE) {
        throw HistoryError(HistoryError::Case::execFailed, lastMessage());
    }
}

QList<HistoryEntry> HistoryService::readEntries(const Statement& statement) const {
    QList<HistoryEntry> entries;
    int result = SQLITE_ROW;
    while ((result = sqlite3_step(statement.get())) == SQLITE_ROW) {
        sqlite3_stmt* row = statement.get();
        entries.append({.id = sqlite3_column_int64(row, 0),
                        .text = columnText(row, 1),
                        .language = columnText(row, 2),
                        .duration = sqlite3_column_double(row, 3),
                        .createdAt = creationTime(columnText(row, 4)),
                        .sentTo = columnText(row, 5)});
    }
    if (result != SQLITE_DONE) {
        throw HistoryError(HistoryError::Case::execFailed, lastMessage());
    }
    return entries;
}

QDateTime HistoryService::creationTime(const QString& text) const {
    // Date and time are read apart: together they would be read as local time, in which some hours
    // of the year don't exist.
    const QStringList parts = text.split(u' ');
    if (parts.size() == 2) {
        const QDate date = QDate::fromString(parts[0], u"yyyy-MM-dd"_s);
        const QTime time = QTime::fromString(parts[1], u"HH:mm:ss"_s);
        if (date.isValid() && time.isValid()) {
            return QDateTime(date, time, Qt::UTC);
        }
    }
    return m_scheduler.wallTime();
}

std::string HistoryService::lastMessage() const {
    return sqlite3_errmsg(m_db.get());
}

} // namespace quorvin
