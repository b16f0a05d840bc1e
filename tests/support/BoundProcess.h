#pragma once

#include <QProcess>
#include <QStringList>

namespace quorvin::testing {

/// The command for a child that ends with this program, however that ends. From the main thread
/// only: the end of the thread that started the child counts as well.
[[nodiscard]] inline QStringList boundCommand(const QStringList& command) {
    return QStringList{QStringLiteral("setpriv"), QStringLiteral("--pdeathsig=KILL")} + command;
}

/// Starts such a child.
inline void startBound(QProcess& process, const QStringList& command) {
    const QStringList bound = boundCommand(command);
    process.start(bound.first(), bound.sliced(1));
}

} // namespace quorvin::testing
