#pragma once

#include <QFont>
#include <QString>

namespace quorvin {

/// The typeface of the program.
namespace GeistFont {

/// The name of the face for a weight.
[[nodiscard]] QString name(QFont::Weight weight);
/// That face at a size in points of the layout, which are pixels at a scale of 1. Where Geist isn't
/// installed, Inter stands in with the same weight.
[[nodiscard]] QFont font(double size, QFont::Weight weight = QFont::Normal);

} // namespace GeistFont

} // namespace quorvin
