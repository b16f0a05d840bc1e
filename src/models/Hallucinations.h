#pragma once

#include <QString>

namespace quorvin {

/// Whether a transcribed text is one of those that speech models invent on silence and noise: one
/// of a fixed list, whole and in any casing, or a short remark in square brackets. A second net
/// behind the engine's own filter, with a list of its own.
[[nodiscard]] bool isWhisperHallucination(const QString& text);

} // namespace quorvin
