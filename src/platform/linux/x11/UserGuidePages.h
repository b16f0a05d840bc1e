#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace quorvin {

/// The page of the user guide in `directory` that says what to do here in place of the system
/// settings page `url`; absent for every other URL and when the guide has no such page.
[[nodiscard]] std::optional<QUrl> userGuidePage(const QString& url, const QString& directory);

} // namespace quorvin
