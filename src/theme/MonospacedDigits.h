#pragma once

#include <QFont>
#include <QList>
#include <QString>
#include <QTextLayout>

namespace quorvin {

/// Formats for a line's layout that give each digit the room of the widest one, with the digit in
/// its middle, so that a counting number stands still. Qt can't yet switch on a font's own figures
/// of equal width.
///
/// `font` is what the line is laid out in, with the metrics of its design (the default of Qt
/// Quick). The line has to be indented by `monospacedIndent`.
[[nodiscard]] QList<QTextLayout::FormatRange> monospacedDigits(const QString& text,
                                                               const QFont& font);

/// The room to the left of a digit that the line begins with, in pixels. No format can make it.
[[nodiscard]] double monospacedIndent(const QString& text, const QFont& font);

} // namespace quorvin
