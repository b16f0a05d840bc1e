#include "fuzz/HistoryFuzzing.h"

#include <memory>

#include <sqlite3.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::HistoryPlace;
using quorvin::testing::Parts;
using quorvin::testing::readEntries;
using quorvin::testing::require;

namespace {

struct Close {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
template <typename T>
using Handle = std::unique_ptr<T, Close>;

/// The first letter is the type: "n"ull, "i"nteger, "r"eal, "t"ext and "b"lob.
void bind(sqlite3_stmt* statement, int parameter, const QByteArray& part) {
    const QByteArray value = part.mid(1);
    const auto size = static_cast<int>(value.size());
    switch (part.isEmpty() ? 'n' : part[0]) {
    case 'i':
        sqlite3_bind_int64(statement, parameter, value.toLongLong());
        break;
    case 'r':
        sqlite3_bind_double(statement, parameter, value.toDouble());
        break;
    case 't':
        sqlite3_bind_text(statement, parameter, value.constData(), size, SQLITE_TRANSIENT);
        break;
    case 'b':
        sqlite3_bind_blob(statement, parameter, value.constData(), size, SQLITE_TRANSIENT);
        break;
    default:
        break;
    }
}

/// Another program's row, in a table of the same columns that holds them to nothing.
void insert(const QString& path, const Parts& columns) {
    sqlite3* opened = nullptr;
    require(sqlite3_open(path.toUtf8().constData(), &opened) == SQLITE_OK, "the file opens");
    const Handle<sqlite3> database(opened);
    require(sqlite3_exec(opened,
                         "CREATE TABLE history"
                         "(id INTEGER PRIMARY KEY, text, language, duration, created_at, sent_to)",
                         nullptr, nullptr, nullptr) == SQLITE_OK,
            "the table is made");
    sqlite3_stmt* prepared = nullptr;
    sqlite3_prepare_v2(opened, "INSERT INTO history VALUES (7, ?, ?, ?, ?, ?)", -1, &prepared,
                       nullptr);
    const Handle<sqlite3_stmt> statement(prepared);
    for (int i = 0; i < 5; ++i) {
        bind(prepared, i + 1, columns[i]);
    }
    require(sqlite3_step(prepared) == SQLITE_DONE, "the row is inserted");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Parts columns(data, size);
    HistoryPlace place;
    place.directory.write(place.database, {});
    insert(place.directory.path(place.database), columns);

    HistoryService history(place.bundle, place.scheduler);
    readEntries(history);
    const QList<HistoryEntry> entries = history.recentEntries(1);
    require(entries.size() == 1 && entries[0].id == 7, "whatever is in a row, it is an entry");
    if (columns[0].startsWith('t')) {
        require(entries[0].text == QString::fromUtf8(columns[0].mid(1)), "a text is kept whole");
    }
    require(entries[0].createdAt.time().msec() == 0, "a time is whole seconds");

    history.deleteEntry(7);
    history.add(entries[0].text + u"x"_s, entries[0].language, entries[0].duration,
                entries[0].sentTo);
    return 0;
}
