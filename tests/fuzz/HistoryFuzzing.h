#pragma once

#include "fuzz/Fuzzing.h"
#include "fuzz/ScratchDirectory.h"
#include "services/records/HistoryService.h"
#include "support/VirtualScheduler.h"
#include "support/fakes/FakeApplicationBundle.h"

namespace quorvin::testing {

/// Where a history of one run is, and what it needs.
struct HistoryPlace {
    HistoryPlace() { bundle.applicationSupport = directory.path(QStringLiteral("data")); }

    ScratchDirectory directory;
    const QString database = QStringLiteral("data/quorvin/history.db");
    FakeApplicationBundle bundle;
    VirtualScheduler scheduler;
};

/// Reads all there is; a database that can't be read may say so.
inline void readEntries(const HistoryService& history) {
    constexpr int limit = 20;
    const QList<HistoryEntry> entries = history.recentEntries(limit);
    require(entries.size() <= limit, "no more entries are given than asked for");
    for (const HistoryEntry& entry : entries) {
        require(entry.createdAt.isValid() && entry.createdAt.timeSpec() == Qt::UTC,
                "an entry has its time in UTC");
    }
}

} // namespace quorvin::testing
