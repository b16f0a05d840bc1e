#pragma once

#include <QFont>
#include <QStringList>

namespace quorvin {

/// The typeface of the program.
namespace GeistFont {

/// The name of the face for a weight.
[[nodiscard]] QString name(QFont::Weight weight);
/// The families to look for, best first: Inter stands in where Geist isn't installed.
[[nodiscard]] QStringList families();

} // namespace GeistFont

} // namespace quorvin
