#include "views/compact/CompactLabels.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

QString labelOf(const QString& name) {
    return CompactLabels::micLabel({{u"default"_s, u"System Default"_s, 0}, {u"7"_s, name, 7}},
                                   u"7"_s);
}

} // namespace

TEST(MicLabel, IsTheFirstWordOfTheName) {
    EXPECT_EQ(labelOf(u"MacBook Pro Microphone"_s), u"MacBook"_s);
    EXPECT_EQ(labelOf(u"Yeti"_s), u"Yeti"_s);
}

TEST(MicLabel, IsCutToEightCharacters) {
    EXPECT_EQ(labelOf(u"Conferencing Unit"_s), u"Conferen"_s);
    EXPECT_EQ(labelOf(u"Speakers"_s), u"Speakers"_s);
    EXPECT_EQ(labelOf(u"Speakerxy"_s), u"Speakerx"_s);
    EXPECT_EQ(labelOf(u"e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301"_s),
              u"e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301"_s);
}

TEST(MicLabel, SaysMicWhenTheSelectedDeviceIsNotThere) {
    EXPECT_EQ(CompactLabels::micLabel({{u"7"_s, u"Yeti"_s, 7}}, u"8"_s), u"Mic"_s);
    EXPECT_EQ(CompactLabels::micLabel({}, u"default"_s), u"Mic"_s);
}

TEST(DurationLabel, CountsWholeSecondsAndMinutes) {
    EXPECT_EQ(CompactLabels::duration(0), u"0:00"_s);
    EXPECT_EQ(CompactLabels::duration(7.99), u"0:07"_s);
    EXPECT_EQ(CompactLabels::duration(60), u"1:00"_s);
    EXPECT_EQ(CompactLabels::duration(754.2), u"12:34"_s);
    EXPECT_EQ(CompactLabels::duration(3661), u"61:01"_s);
}

TEST(WordCount, CountsWhatStandsBetweenWhiteSpace) {
    EXPECT_EQ(CompactLabels::wordCount(QString()), 0);
    EXPECT_EQ(CompactLabels::wordCount(u" \n\t"_s), 0);
    EXPECT_EQ(CompactLabels::wordCount(u"one"_s), 1);
    EXPECT_EQ(CompactLabels::wordCount(u" fix  the\nlogin, please "_s), 4);
}

TEST(MissingLabel, NamesTheFirstThingThatATakeLacks) {
    EXPECT_EQ(CompactLabels::missing(false, false, false), u"Microphone access is missing"_s);
    EXPECT_EQ(CompactLabels::missing(true, false, false), u"Accessibility permission is missing"_s);
    EXPECT_EQ(CompactLabels::missing(true, true, false), u"The speech model isn’t loaded"_s);
    EXPECT_EQ(CompactLabels::missing(true, true, true), QString());
}
