#pragma once

#include <QString>

#include <optional>

namespace quorvin {

/// The dictated text in the engine's standard output: its lines trimmed and joined by blanks;
/// absent when nothing is left or the text is an invention of the model. Logs both.
[[nodiscard]] std::optional<QString> parseWhisperOutput(const QString& output);

} // namespace quorvin
