#pragma once

#include <QColor>
#include <QStringView>

namespace quorvin {

/// The sRGB colour of "RRGGBB", "AARRGGBB" or "RGB", each nibble doubled. Whatever stands around
/// the letters and digits is left out, and the number ends at the first character that is no
/// hexadecimal digit. Text of another length is opaque black.
[[nodiscard]] QColor hexColor(QStringView text);

} // namespace quorvin
