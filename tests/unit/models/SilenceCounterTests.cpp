#include "models/SilenceCounter.h"

#include <gtest/gtest.h>

using quorvin::SilenceCounter;

TEST(SilenceCounter, ALevelOfExactlyTheThresholdIsNotSilence) {
    SilenceCounter counter;
    for (int tick = 0; tick < 10'000; ++tick) {
        ASSERT_FALSE(counter.tick(0.015, 10, 1));
        ASSERT_FALSE(counter.tick(SilenceCounter::threshold, 10, 1));
    }
}

TEST(SilenceCounter, CountsTicksUpToTheTimeout) {
    SilenceCounter counter;
    for (int tick = 1; tick <= 30; ++tick) {
        ASSERT_FALSE(counter.tick(0.0149, 10, 1)) << tick; // 30 ticks are 0.99 s
    }
    EXPECT_TRUE(counter.tick(0.0149, 10, 1));
}

TEST(SilenceCounter, NothingCountsDuringTheGrace) {
    SilenceCounter counter;
    for (int tick = 0; tick < 100; ++tick) {
        ASSERT_FALSE(counter.tick(0, 1.5, 1));
    }
    EXPECT_FALSE(counter.tick(0, 1.533, 1));
}

TEST(SilenceCounter, ASingleLoudTickStartsTheCountAgain) {
    SilenceCounter counter;
    for (int tick = 0; tick < 30; ++tick) {
        ASSERT_FALSE(counter.tick(0, 10, 1));
    }
    ASSERT_FALSE(counter.tick(0.5, 10, 1));
    for (int tick = 0; tick < 30; ++tick) {
        ASSERT_FALSE(counter.tick(0, 10, 1));
    }
    EXPECT_TRUE(counter.tick(0, 10, 1));
}
