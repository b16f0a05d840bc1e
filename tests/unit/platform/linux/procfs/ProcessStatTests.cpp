#include "platform/linux/procfs/ProcessStat.h"

#include <QFileInfo>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

TEST(ProcessStat, ReadsNameParentAndTerminal) {
    const auto stat = parseProcessStat("4711 (claude) S 4700 4711 4711 34816 4711 4194304 329 0\n");
    ASSERT_TRUE(stat);
    EXPECT_EQ(stat->name, "claude");
    EXPECT_EQ(stat->parent, 4700);
    EXPECT_EQ(stat->terminalDevice, 34816U);
}

TEST(ProcessStat, TheNameEndsAtTheLastParenthesis) {
    const auto stat = parseProcessStat("12 (a) S 9 (b)) R 7 12 12 1025 -1 0 0");
    ASSERT_TRUE(stat);
    EXPECT_EQ(stat->name, "a) S 9 (b)");
    EXPECT_EQ(stat->parent, 7);
    EXPECT_EQ(stat->terminalDevice, 1025U);
}

TEST(ProcessStat, ANameMayBeEmptyOrHoldALineBreak) {
    const auto empty = parseProcessStat("12 () R 7 12 12 0 -1");
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->name, "");
    const auto broken = parseProcessStat("12 (a\nb) R 7 12 12 0 -1");
    ASSERT_TRUE(broken);
    EXPECT_EQ(broken->name, "a\nb");
}

TEST(ProcessStat, RefusesWhatTheKernelDoesNotWrite) {
    EXPECT_FALSE(parseProcessStat(""));
    EXPECT_FALSE(parseProcessStat("12"));
    EXPECT_FALSE(parseProcessStat("12 )claude( S 1 2 3 4"));
    EXPECT_FALSE(parseProcessStat("12 (claude) S 1 2"));
    EXPECT_FALSE(parseProcessStat("12 (claude) S x 2 3 0 5"));
    EXPECT_FALSE(parseProcessStat("12 (claude) S 1 2 3 x 5"));
}

TEST(TerminalName, PseudoTerminalsAreNumberedBelowPts) {
    EXPECT_EQ(terminalName(34816), u"pts/0"_s);
    EXPECT_EQ(terminalName(34816 + 255), u"pts/255"_s);
    // The higher bits of a minor number stand above the major number.
    EXPECT_EQ(terminalName(34816 + (1U << 20) + 44), u"pts/300"_s);
    EXPECT_EQ(terminalName(137U << 8), u"pts/256"_s);
}

TEST(TerminalName, OtherTerminalsAreNamedByTheSystem) {
    if (!QFileInfo::exists(u"/sys/dev/char/4:1"_s)) {
        GTEST_SKIP() << "This machine has no virtual consoles";
    }
    EXPECT_EQ(terminalName((4U << 8) + 1), u"tty1"_s);
}

TEST(TerminalName, NoDeviceAndAnUnknownOneHaveNoName) {
    EXPECT_EQ(terminalName(0), std::nullopt);
    EXPECT_EQ(terminalName(0xfff00U + 0xff), std::nullopt);
}
