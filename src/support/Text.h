#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// Operations on text. Characters are user-perceived ones (extended grapheme clusters, Unicode
/// UAX #29).
namespace quorvin::text {

/// Number of characters.
[[nodiscard]] qsizetype characterCount(const QString& text);

/// The first `count` characters, or the whole text if it has fewer.
[[nodiscard]] QString prefix(const QString& text, qsizetype count);

/// The characters in order.
[[nodiscard]] QStringList characters(const QString& text);

/// Without white space and line breaks at both ends.
[[nodiscard]] QString trimmed(const QString& text);

/// Without blanks (Unicode Zs) and tabs at both ends; line breaks stay.
[[nodiscard]] QString trimmedOfBlanks(const QString& text);

/// Split at every line break (LF, VT, FF, CR, NEL, LS, PS); empty lines stay.
[[nodiscard]] QStringList lines(const QString& text);

/// The first `limit` characters of `text`, followed by "..." when it has more than that.
[[nodiscard]] QString elided(const QString& text, qsizetype limit);

/// Absent when `bytes` are not valid UTF-8.
[[nodiscard]] std::optional<QString> fromUtf8(const QByteArray& bytes);

} // namespace quorvin::text
