#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace quorvin {

/// Runs `program` (an absolute path) and returns what it has written to its standard output; its
/// error output is thrown away and its exit status not looked at. Both outputs are read while it
/// runs, so that it can write as much as it likes. Absent when it can't be started. Blocks without
/// limit of time. Any thread.
[[nodiscard]] std::optional<QByteArray> runAndWaitForOutput(const QString& program,
                                                            const QStringList& arguments);

} // namespace quorvin
