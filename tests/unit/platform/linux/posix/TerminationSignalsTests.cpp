#include "platform/linux/posix/TerminationSignals.h"
#include "support/Eventually.h"

#include <csignal>

#include <gtest/gtest.h>

using quorvin::TerminationSignals;
using quorvin::testing::eventually;

class TerminationSignalsTest : public ::testing::TestWithParam<int> {};

TEST_P(TerminationSignalsTest, TheFirstSignalIsToldOnceToTheEventLoop) {
    int told = 0;
    const TerminationSignals signals([&told] { ++told; });
    ASSERT_EQ(raise(GetParam()), 0);
    EXPECT_EQ(told, 0);
    EXPECT_TRUE(eventually([&told] { return told == 1; }));
}

TEST_P(TerminationSignalsTest, TheSecondSignalOfAKindEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            const TerminationSignals signals([] {});
            raise(GetParam());
            raise(GetParam());
        },
        ::testing::KilledBySignal(GetParam()), "");
}

TEST_P(TerminationSignalsTest, AfterwardsASignalEndsTheProcessAtOnce) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            {
                const TerminationSignals signals([] {});
            }
            raise(GetParam());
        },
        ::testing::KilledBySignal(GetParam()), "");
}

INSTANTIATE_TEST_SUITE_P(Signals, TerminationSignalsTest,
                         ::testing::Values(SIGTERM, SIGINT, SIGHUP));

TEST(TerminationSignals, ASignalThatWasIgnoredStaysIgnored) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            std::signal(SIGHUP, SIG_IGN);
            int told = 0;
            const TerminationSignals signals([&told] { ++told; });
            raise(SIGHUP);
            raise(SIGHUP);
            std::exit(told);
        },
        ::testing::ExitedWithCode(0), "");
}
