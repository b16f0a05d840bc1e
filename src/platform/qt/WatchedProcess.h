#pragma once

#include "platform/Scheduler.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

class QObject;

namespace quorvin {

/// What a child printed on its standard output and error, as it came, and whether it ended by
/// itself with the status 0.
struct WatchedResult {
    QByteArray output;
    bool hasSucceeded = false;
};

/// Runs `program` with these arguments, not through a shell and with empty input, and asks it to
/// terminate when it still runs after `limit`. Absent when it can't be started, or when `owner`
/// goes meanwhile, which kills it. Main thread; doesn't hold it.
[[nodiscard]] Task<std::optional<WatchedResult>> runWatched(Scheduler& scheduler, QObject& owner,
                                                            QString program, QStringList arguments,
                                                            Scheduler::Duration limit);

} // namespace quorvin
