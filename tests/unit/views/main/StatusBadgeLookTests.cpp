#include "views/main/StatusBadgeLook.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

QString lengthOfTake(double seconds) {
    return StatusBadgeLook::timerText(true, false, seconds, 0);
}

QString dots(double elapsed) {
    return StatusBadgeLook::timerText(false, true, 12, elapsed);
}

} // namespace

TEST(StatusBadgeLabel, TellsTheFirstStateThatHolds) {
    EXPECT_EQ(StatusBadgeLook::label(true, true), u"REC"_s);
    EXPECT_EQ(StatusBadgeLook::label(true, false), u"REC"_s);
    EXPECT_EQ(StatusBadgeLook::label(false, true), u"PROC"_s);
    EXPECT_EQ(StatusBadgeLook::label(false, false), u"READY"_s);
}

TEST(StatusBadgeTimer, CountsWholeSecondsOfATake) {
    EXPECT_EQ(lengthOfTake(0), u"00:00"_s);
    EXPECT_EQ(lengthOfTake(9.99), u"00:09"_s);
    EXPECT_EQ(lengthOfTake(60), u"01:00"_s);
    EXPECT_EQ(lengthOfTake(754.2), u"12:34"_s);
}

TEST(StatusBadgeTimer, CountsMinutesOnPastTheHour) {
    EXPECT_EQ(lengthOfTake(3725), u"62:05"_s);
    EXPECT_EQ(lengthOfTake(7200), u"120:00"_s);
}

TEST(StatusBadgeTimer, CountsATakeAlsoWhileTheLastOneIsTranscribed) {
    EXPECT_EQ(StatusBadgeLook::timerText(true, true, 5, 900), u"00:05"_s);
}

TEST(StatusBadgeTimer, AddsADotEvery400MillisecondsUpToThree) {
    EXPECT_EQ(dots(0), u"."_s);
    EXPECT_EQ(dots(399.9), u"."_s);
    EXPECT_EQ(dots(400), u".."_s);
    EXPECT_EQ(dots(800), u"..."_s);
    EXPECT_EQ(dots(1199), u"..."_s);
    EXPECT_EQ(dots(1200), u"."_s);
    EXPECT_EQ(dots(1e12 * 1200 + 400), u".."_s) << "whenever";
}

TEST(StatusBadgeTimer, SaysNothingAtRest) {
    EXPECT_EQ(StatusBadgeLook::timerText(false, false, 12, 900), QString());
}
