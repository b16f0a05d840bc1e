#include "services/audio/LookbackRing.h"

#include <numeric>

#include <gtest/gtest.h>

using namespace quorvin;

namespace {

class LookbackRingTest : public ::testing::Test {
protected:
    LookbackRingTest() { ring.reset(); }

    /// Sample n of the stream has the value n + 1: none is zero.
    static std::vector<float> stream(std::size_t first, std::size_t end) {
        std::vector<float> samples(end - first);
        std::iota(samples.begin(), samples.end(), static_cast<float>(first + 1));
        return samples;
    }

    LookbackRing ring;
};

} // namespace

TEST_F(LookbackRingTest, ADrainOfNothingIsEmpty) {
    EXPECT_TRUE(ring.drain().empty());
    EXPECT_TRUE(LookbackRing().drain().empty()); // also before the first reset
}

TEST_F(LookbackRingTest, AThousandSamplesComeBackInOrder) {
    ring.write(stream(0, 1000));
    EXPECT_EQ(ring.drain(), stream(0, 1000));
}

TEST_F(LookbackRingTest, OfFiftyThousandSamplesTheLatestFortyEightThousandStay) {
    ring.write(stream(0, 30'000));
    ring.write(stream(30'000, 50'000));
    EXPECT_EQ(ring.drain(), stream(2000, 50'000));
}

TEST_F(LookbackRingTest, AFullRingGoesOnAtItsFirstSlot) {
    ring.write(stream(0, 48'000));
    LookbackRing justFull = ring;
    EXPECT_EQ(justFull.drain(), stream(0, 48'000));
    ring.write(stream(48'000, 48'001));
    EXPECT_EQ(ring.drain(), stream(1, 48'001));
}

TEST_F(LookbackRingTest, ARingOfZerosIsEmptyAndIsResetAllTheSame) {
    ring.write(std::vector<float>(47'999));
    EXPECT_TRUE(ring.drain().empty());
    ring.write(stream(0, 2)); // would be the 48000th and 48001st of the old count
    EXPECT_EQ(ring.drain(), stream(0, 2));
}

TEST_F(LookbackRingTest, OnlyLeadingZerosAreCutOff) {
    ring.write(std::vector{0.0F, 0.0F, 0.5F, 0.0F, 0.25F});
    EXPECT_EQ(ring.drain(), (std::vector{0.5F, 0.0F, 0.25F}));
}

TEST_F(LookbackRingTest, LeadingZerosAreCutOffAcrossTheWrap) {
    ring.write(stream(0, 10));
    ring.write(std::vector<float>(47'995)); // overwrites the first five
    ring.write(std::vector<float>(10));     // and the rest
    ring.write(std::vector{7.0F, 0.0F});
    EXPECT_EQ(ring.drain(), (std::vector{7.0F, 0.0F}));
}

TEST_F(LookbackRingTest, ASecondDrainIsEmpty) {
    ring.write(stream(0, 100));
    EXPECT_EQ(ring.drain().size(), 100U);
    EXPECT_TRUE(ring.drain().empty());
}

TEST_F(LookbackRingTest, AResetForgetsWhatWasWritten) {
    ring.write(stream(0, 100));
    ring.reset();
    EXPECT_TRUE(ring.drain().empty());
}
