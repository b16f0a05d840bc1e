#pragma once

#include "theme/ThemeColors.h"

#include <array>

namespace quorvin {

/// The built-in themes, in the order in which they are offered.
namespace ThemeLibrary {

[[nodiscard]] const std::array<ThemeColors, 8>& allThemes();
/// The one that a user who never chose has.
[[nodiscard]] const ThemeColors& razer();

} // namespace ThemeLibrary

/// Colours that are the same in all themes.
namespace Theme {

[[nodiscard]] QColor magenta();
[[nodiscard]] QColor cyan();

} // namespace Theme

} // namespace quorvin
