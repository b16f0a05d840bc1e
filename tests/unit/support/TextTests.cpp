#include "support/Text.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

TEST(Text, CountsUserPerceivedCharacters) {
    EXPECT_EQ(text::characterCount(u""_s), 0);
    EXPECT_EQ(text::characterCount(u"abc"_s), 3);
    EXPECT_EQ(text::characterCount(u"e\u0301"_s), 1);            // e with a combining acute accent
    EXPECT_EQ(text::characterCount(u"👩‍👩‍👧"_s), 1); // a family joined by ZWJ
    EXPECT_EQ(text::characterCount(u"🇩🇪🇫🇷"_s), 2); // two flags of two code points each
}

TEST(Text, PrefixNeverSplitsACharacter) {
    EXPECT_EQ(text::prefix(u"a👩‍👩‍👧b"_s, 2), u"a👩‍👩‍👧"_s);
    EXPECT_EQ(text::prefix(u"abc"_s, 0), u""_s);
    EXPECT_EQ(text::prefix(u"abc"_s, 3), u"abc"_s);
    EXPECT_EQ(text::prefix(u"abc"_s, 4), u"abc"_s);
}

TEST(Text, CharactersKeepsTheOrder) {
    EXPECT_EQ(text::characters(u"x♪🎵"_s), (QStringList{u"x"_s, u"♪"_s, u"🎵"_s}));
    EXPECT_TRUE(text::characters(u""_s).isEmpty());
}

TEST(Text, TrimmedDropsWhiteSpaceAndLineBreaks) {
    EXPECT_EQ(text::trimmed(u" \t\r\n\u00a0a b\u2029\n "_s), u"a b"_s);
    EXPECT_EQ(text::trimmed(u" \n"_s), u""_s);
}

TEST(Text, TrimmedOfBlanksKeepsLineBreaks) {
    EXPECT_EQ(text::trimmedOfBlanks(u" \u3000\ta\n "_s), u"a\n"_s);
}

TEST(Text, LinesSplitsAtEveryKindOfBreak) {
    EXPECT_EQ(text::lines(u"a\nb\r\nc\u2028d"_s),
              (QStringList{u"a"_s, u"b"_s, u""_s, u"c"_s, u"d"_s}));
    EXPECT_EQ(text::lines(u""_s), QStringList{u""_s});
}

TEST(Text, ElidedCutsOnlyWhatIsLonger) {
    EXPECT_EQ(text::elided(u"abc"_s, 3), u"abc"_s);
    EXPECT_EQ(text::elided(u"abcd"_s, 3), u"abc..."_s);
}

TEST(Text, FromUtf8TakesNothingElse) {
    EXPECT_EQ(text::fromUtf8("Gr\xC3\xBC\xC3\x9F"
                             "e"),
              u"Grüße"_s);
    EXPECT_EQ(text::fromUtf8(QByteArray("a\0b", 3)), u"a\0b"_s);
    EXPECT_EQ(text::fromUtf8(""), QString());
    EXPECT_EQ(text::fromUtf8("Gr\xFC\xDF"
                             "e"),
              std::nullopt);
    EXPECT_EQ(text::fromUtf8("cut \xC3"), std::nullopt) << "in the middle of a character";
}
