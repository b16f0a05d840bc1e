#include "fuzz/Fuzzing.h"
#include "models/Hallucinations.h"
#include "services/transcription/HallucinationFilter.h"
#include "services/transcription/WhisperOutput.h"
#include "support/Text.h"

using namespace quorvin;
using quorvin::testing::bytes;
using quorvin::testing::require;

namespace {

void textIsTakenApartAndKept(const QString& text) {
    require(text::characters(text).join(QString()) == text, "the characters make the text");
    require(text::characterCount(text) == text::characters(text).size(), "and are counted");
    require(text::prefix(text, text::characterCount(text)) == text, "all of them are all of it");
    require(text.startsWith(text::prefix(text, 3)), "the first characters are at the beginning");
    require(text::trimmed(text::trimmed(text)) == text::trimmed(text), "once trimmed is trimmed");
    require(text::lines(text).join(u'\n').size() == text.size(), "lines lose but their breaks");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString output = QString::fromUtf8(bytes(data, size));
    textIsTakenApartAndKept(output);

    const QString filtered = filterHallucinations(output);
    require(filtered.isEmpty() || filtered == output, "the filter takes all or nothing");
    require(filterHallucinations(filtered) == filtered, "the filter has nothing left to take");

    const auto text = parseWhisperOutput(output);
    if (text) {
        require(!text->isEmpty() && text->size() <= output.size(), "nothing is added");
        require(text::lines(*text).size() == 1, "a text is one line");
        require(text::trimmedOfBlanks(*text) == *text, "without blanks around");
        require(parseWhisperOutput(*text) == text, "and reads back as it is");
    }
    require(isWhisperHallucination(output) == isWhisperHallucination(text::trimmed(output)),
            "what stands around an invention doesn't save it");
    require(isWhisperHallucination(output) == isWhisperHallucination(u' ' + output + u'\n'),
            "nor does what is added");
    return 0;
}
