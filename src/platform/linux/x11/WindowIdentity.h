#pragma once

#include "platform/Workspace.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

/// Whom a window belongs to, by what its program has written on it.
namespace quorvin::windowIdentity {

/// The process with this number on the machine of this name; absent for a number that is none, and
/// on another machine. Without a machine the number is believed: old toolkits set it alone.
[[nodiscard]] std::optional<ProcessID> process(std::optional<std::uint32_t> number,
                                               const QString& machine);

struct Names {
    QString instanceName;
    QString className;
};

/// The two names in the value of WM_CLASS, each of which ends with a NUL; empty where missing.
[[nodiscard]] Names names(const QByteArray& windowClass);

} // namespace quorvin::windowIdentity
