#include "services/transcription/WhisperOutput.h"

#include "services/transcription/HallucinationFilter.h"
#include "services/transcription/WhisperLog.h"
#include "support/Text.h"

namespace quorvin {

std::optional<QString> parseWhisperOutput(const QString& output) {
    QStringList lines = text::lines(output);
    for (QString& line : lines) {
        line = text::trimmedOfBlanks(line);
    }
    lines.removeAll(QString());
    const QString joined = lines.join(u' ');
    if (joined.isEmpty()) {
        return std::nullopt;
    }
    qCDebug(whisperLog, "Raw whisper output: \"%s\"", qUtf8Printable(joined));
    const QString text = filterHallucinations(joined);
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

} // namespace quorvin
