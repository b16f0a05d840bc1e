#pragma once

#include <QString>

#include <optional>

namespace quorvin {

/// The bundle identifier that the terminal table knows a terminal by, from the two names in its
/// window's class or, where those tell nothing, from the file name of its executable; case doesn't
/// matter. Absent for every other program. The terminals that come with the desktops all stand for
/// the system's own one, "com.apple.Terminal".
[[nodiscard]] std::optional<QString> terminalBundleIdentifier(const QString& windowInstance,
                                                              const QString& windowClass,
                                                              const QString& executable);

} // namespace quorvin
