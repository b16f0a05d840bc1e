#pragma once

#include <QString>

namespace quorvin {

/// Empty when `text` is one that speech models invent on noise and silence, otherwise `text` as it
/// is: all or nothing, never edited. Known phrases count only as the whole text, a music sign
/// anywhere; one word three times or more, and a single character, count too. What is dropped goes
/// to the log.
[[nodiscard]] QString filterHallucinations(const QString& text);

} // namespace quorvin
