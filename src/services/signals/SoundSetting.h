#pragma once

#include "platform/UserDefaults.h"

#include <QString>

namespace quorvin {

namespace SettingsKey {
inline const QString soundsEnabled = QStringLiteral("soundsEnabled");
}

/// Whether sounds are wanted: what is stored, and true as long as nothing is. A value of another
/// type reads as false.
[[nodiscard]] inline bool storedSoundsEnabled(const UserDefaults& defaults) {
    return defaults.boolean(SettingsKey::soundsEnabled)
        .value_or(!defaults.contains(SettingsKey::soundsEnabled));
}

} // namespace quorvin
