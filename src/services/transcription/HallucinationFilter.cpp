#include "services/transcription/HallucinationFilter.h"

#include "services/transcription/WhisperLog.h"
#include "support/Text.h"

#include <algorithm>
#include <array>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace {

// Overlaps on purpose with the list that the dictation flow applies afterwards.
constexpr std::array<QStringView, 24> knownPhrases = {
    u"thanks for watching",
    u"thank you for watching",
    u"subscribe",
    u"like and subscribe",
    u"please subscribe",
    u"don't forget to subscribe",
    u"see you next time",
    u"see you in the next",
    u"bye bye",
    u"goodbye",
    u"thank you",
    u"thanks",
    u"you",
    u"...",
    u"the end",
    u"music",
    u"applause",
    u"silence",
    u"[music]",
    u"[applause]",
    u"[silence]",
    u"subtitles by",
    u"captions by",
    u"transcribed by",
};

bool isKnownPhrase(const QString& text) {
    const QString form = text::trimmed(text.toLower());
    return std::find(knownPhrases.begin(), knownPhrases.end(), form) != knownPhrases.end();
}

/// With a mark that combines with it a sign is another character.
bool hasCharacter(const QString& text, const QString& sign) {
    // Taking a long text apart costs much, and most texts need not be.
    return text.contains(sign) && text::characters(text).contains(sign);
}

bool hasMusicSign(const QString& text) {
    return hasCharacter(text, u"♪"_s) || hasCharacter(text, u"♫"_s) || text.contains(u"🎵"_s) ||
           text.contains(u"🎶"_s);
}

bool isOneWordRepeated(const QString& text) {
    const QStringList words = text.toLower().split(u' ', Qt::SkipEmptyParts);
    return words.size() >= 3 && words.count(words.first()) == words.size();
}

bool isTooShort(const QString& text) {
    return text::characterCount(text::trimmed(text)) <= 1;
}

QString dropped(const char* reason, const QString& text) {
    qCInfo(whisperLog, "Filtered %s: \"%s\"", reason, qUtf8Printable(text));
    return {};
}

} // namespace

QString filterHallucinations(const QString& text) {
    if (text.isEmpty()) {
        return text;
    }
    if (isKnownPhrase(text)) {
        return dropped("hallucination", text);
    }
    if (hasMusicSign(text)) {
        return dropped("music symbols", text);
    }
    if (isOneWordRepeated(text)) {
        return dropped("repeated word", text);
    }
    if (isTooShort(text)) {
        return dropped("too short", text);
    }
    return text;
}

} // namespace quorvin
