#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace quorvin {

/// A symbol of the icon set (resources/icons), drawn in one colour.
///
/// The drawings are black on white paper: what is white in a drawing, such as the mark in a filled
/// circle, is left out. `side` is the length of the square in pixels. Null for an unknown name.
/// Main thread. Recent drawings are kept.
[[nodiscard]] QImage symbolImage(const QString& name, int side, const QColor& color);

} // namespace quorvin
