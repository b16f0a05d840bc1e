#include "services/transcription/HallucinationFilter.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::LogCapture;

namespace {

class HallucinationFilter : public ::testing::Test {
protected:
    void expectDropped(const QString& text, const QString& reason) {
        EXPECT_EQ(filterHallucinations(text), QString()) << qPrintable(text);
        EXPECT_EQ(log.takeText(), (QStringList{u"info: Filtered %1: \"%2\""_s.arg(reason, text)}));
    }

    void expectKept(const QString& text) {
        EXPECT_EQ(filterHallucinations(text), text);
        EXPECT_EQ(log.takeText(), QStringList());
    }

    LogCapture log{"com.quorvin.WhisperService"};
};

} // namespace

TEST_F(HallucinationFilter, AnEmptyTextIsDroppedWithoutALogLine) {
    expectKept(QString());
}

TEST_F(HallucinationFilter, EveryKnownPhraseIsDropped) {
    for (const QString& phrase : {u"thanks for watching"_s,
                                  u"thank you for watching"_s,
                                  u"subscribe"_s,
                                  u"like and subscribe"_s,
                                  u"please subscribe"_s,
                                  u"don't forget to subscribe"_s,
                                  u"see you next time"_s,
                                  u"see you in the next"_s,
                                  u"bye bye"_s,
                                  u"goodbye"_s,
                                  u"thank you"_s,
                                  u"thanks"_s,
                                  u"you"_s,
                                  u"..."_s,
                                  u"the end"_s,
                                  u"music"_s,
                                  u"applause"_s,
                                  u"silence"_s,
                                  u"[music]"_s,
                                  u"[applause]"_s,
                                  u"[silence]"_s,
                                  u"subtitles by"_s,
                                  u"captions by"_s,
                                  u"transcribed by"_s}) {
        expectDropped(phrase, u"hallucination"_s);
    }
}

TEST_F(HallucinationFilter, CasingAndSurroundingBlanksDontSaveAPhrase) {
    expectDropped(u"Thanks for watching"_s, u"hallucination"_s);
    expectDropped(u"  THANKS FOR WATCHING\n"_s, u"hallucination"_s);
    expectDropped(u"THANK YOU"_s, u"hallucination"_s);
}

TEST_F(HallucinationFilter, APhraseCountsOnlyAsTheWholeText) {
    expectKept(u"Thanks for watching!"_s);
    expectKept(u"Thank you."_s);
    expectKept(u"thanks for watching and goodbye"_s);
    expectKept(u"You know"_s);
}

TEST_F(HallucinationFilter, AMusicSignAnywhereDropsTheWholeText) {
    expectDropped(u"Play the ♪ now"_s, u"music symbols"_s);
    expectDropped(u"Some long and honest sentence ♫"_s, u"music symbols"_s);
    expectDropped(u"♪"_s, u"music symbols"_s);
    expectDropped(u"Play the🎵now"_s, u"music symbols"_s);
    expectDropped(u"🎶 la la"_s, u"music symbols"_s);
}

TEST_F(HallucinationFilter, AMusicSignWithACombiningMarkIsAnotherCharacter) {
    expectKept(u"Play the ♪\u0308 now"_s);
    expectKept(u"Play the ♫\u20DD now"_s);
}

TEST_F(HallucinationFilter, ThreeEqualWordsAreDropped) {
    expectDropped(u"go go go"_s, u"repeated word"_s);
    expectDropped(u"Go GO go"_s, u"repeated word"_s);
    expectDropped(u"ja  ja ja   ja"_s, u"repeated word"_s);
    expectDropped(u"ДА да Да"_s, u"repeated word"_s);
}

TEST_F(HallucinationFilter, TwoEqualWordsAreKept) {
    expectKept(u"go go"_s);
}

TEST_F(HallucinationFilter, PunctuationMakesAnotherWord) {
    expectKept(u"no no no."_s);
}

TEST_F(HallucinationFilter, OneOtherWordKeepsARepetition) {
    expectKept(u"go go gone go"_s);
}

TEST_F(HallucinationFilter, ASingleCharacterIsDropped) {
    expectDropped(u"a"_s, u"too short"_s);
    expectDropped(u" a\n"_s, u"too short"_s);
    expectDropped(u" "_s, u"too short"_s);
    expectKept(u"ab"_s);
}

TEST_F(HallucinationFilter, AnEmojiIsOneCharacter) {
    expectDropped(u"👍"_s, u"too short"_s);
    expectDropped(u"👩‍👩‍👧"_s, u"too short"_s); // a family joined by ZWJ
    expectDropped(u"🇩🇪"_s, u"too short"_s);
    expectKept(u"👍👍"_s);
}

TEST_F(HallucinationFilter, AKeptTextKeepsItsCasingAndBlanks) {
    expectKept(u"  Fix the Parser \n"_s);
}
