#pragma once

#include "services/agents/AgentTypes.h"

#include <QList>
#include <QString>
#include <QUrl>

/// The layout of what is pasted into an agent's terminal.
namespace quorvin::AgentMessage {

/// `text` with the paths of `images`, as an agent of this type reads them. Deliberate: an OpenCode
/// message always begins with the request header, a Claude one only when it has images.
[[nodiscard]] QString compose(AgentType type, const QString& text, const QList<QUrl>& images);

/// The image's path and a line break; a path with a blank in it stands between double quotes.
/// Nothing else is escaped, and the file isn't looked at.
[[nodiscard]] QString pathLine(const QUrl& image);

} // namespace quorvin::AgentMessage
