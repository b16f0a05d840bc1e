#include "models/Hallucinations.h"

#include "support/Text.h"

#include <algorithm>
#include <array>

namespace quorvin {

namespace {

constexpr std::array<QStringView, 23> knownTexts = {
    u"*mumbling*",
    u"*music*",
    u"*applause*",
    u"*clapping*",
    u"*noise*",
    u"*silence*",
    u"*laughing*",
    u"*coughing*",
    u"*sneezing*",
    u"*breathing*",
    u"[blank_audio]",
    u"[silence]",
    u"(silence)",
    u"[ silence ]",
    u"you",
    u"thank you.",
    u"thanks for watching!",
    u"thanks for watching.",
    u".",
    u"..",
    u"...",
    u"♪",
    u"♫",
};

constexpr qsizetype longestBracketedRemark = 30;

} // namespace

bool isWhisperHallucination(const QString& text) {
    const QString form = text::trimmed(text).toLower();
    if (std::find(knownTexts.begin(), knownTexts.end(), form) != knownTexts.end()) {
        return true;
    }
    return form.startsWith(u'[') && form.endsWith(u']') &&
           text::characterCount(form) < longestBracketedRemark;
}

} // namespace quorvin
