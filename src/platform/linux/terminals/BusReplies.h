#pragma once

#include "platform/Workspace.h"

#include <QStringList>
#include <QVariantList>

#include <optional>

/// What the replies of programs on the session bus say, in their first value. A program may reply
/// with anything; a value of another type than is looked for is passed over.
namespace quorvin::busReplies {

/// The number of a process; absent when it can't be one.
[[nodiscard]] std::optional<ProcessID> process(const QVariantList& reply);

[[nodiscard]] QStringList texts(const QVariantList& reply);

/// The names of the objects right below the one that has described itself, in the XML of
/// org.freedesktop.DBus.Introspectable; where that is broken off, those before.
[[nodiscard]] QStringList childNames(const QVariantList& reply);

} // namespace quorvin::busReplies
