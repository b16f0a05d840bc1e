#pragma once

#include <QFont>
#include <QString>

namespace quorvin {

/// The typeface of the program.
namespace GeistFont {

/// The name of the face for a weight.
[[nodiscard]] QString name(QFont::Weight weight);
/// The typeface at a size in points of the layout, which are pixels at a scale of 1. Inter stands in
/// with the same weight where Geist isn't installed.
[[nodiscard]] QFont font(double size, QFont::Weight weight = QFont::Normal);

} // namespace GeistFont

} // namespace quorvin
