#include "models/Hallucinations.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

TEST(WhisperHallucination, KnownTextsInAnyCasingWithBlanksAround) {
    EXPECT_TRUE(isWhisperHallucination(u"  THANK YOU. \n"_s));
    EXPECT_TRUE(isWhisperHallucination(u"You"_s));
    EXPECT_TRUE(isWhisperHallucination(u"*Music*"_s));
    EXPECT_TRUE(isWhisperHallucination(u"(silence)"_s));
    EXPECT_TRUE(isWhisperHallucination(u"..."_s));
    EXPECT_TRUE(isWhisperHallucination(u"♪"_s));
}

TEST(WhisperHallucination, ComparesTheWholeText) {
    EXPECT_FALSE(isWhisperHallucination(u"Thank you for the review."_s));
    EXPECT_FALSE(isWhisperHallucination(u"Thank you"_s));
    EXPECT_FALSE(isWhisperHallucination(u"you know"_s));
    EXPECT_FALSE(isWhisperHallucination(u"...."_s));
}

TEST(WhisperHallucination, ShortRemarksInSquareBrackets) {
    EXPECT_TRUE(isWhisperHallucination(u"[MUSIC PLAYING]"_s));
    EXPECT_TRUE(isWhisperHallucination(u"[]"_s));
    EXPECT_FALSE(isWhisperHallucination(u"(music playing)"_s));
    const QString twentyNine = u'[' + QString(27, u'x') + u']';
    const QString thirty = u'[' + QString(28, u'x') + u']';
    EXPECT_TRUE(isWhisperHallucination(twentyNine));
    EXPECT_FALSE(isWhisperHallucination(thirty));
}

TEST(WhisperHallucination, BracketsAreMeasuredInUserPerceivedCharacters) {
    QString families;
    for (int i = 0; i < 10; ++i) {
        families += u"👩‍👩‍👧"_s;
    }
    EXPECT_TRUE(isWhisperHallucination(u'[' + families + u']'));
}
