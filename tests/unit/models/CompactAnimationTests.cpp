#include "models/CompactAnimation.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

using namespace quorvin;

namespace {

/// Answers with the numbers given, and keeps the ranges that were asked for.
class Dice {
public:
    explicit Dice(std::deque<double> numbers) : m_numbers(std::move(numbers)) {}

    CompactAnimation::Random random() {
        return [this](double low, double high) {
            ranges.emplace_back(low, high);
            const double number = m_numbers.front();
            m_numbers.pop_front();
            return number;
        };
    }
    [[nodiscard]] bool isUsedUp() const { return m_numbers.empty(); }

    std::vector<std::pair<double, double>> ranges;

private:
    std::deque<double> m_numbers;
};

CompactAnimation::Random always(double number) {
    return [number](double, double) { return number; };
}

} // namespace

TEST(CompactLevel, RisesFastAndFallsSlowly) {
    EXPECT_DOUBLE_EQ(CompactAnimation::smoothedLevel(0, 0.5), 0.325);
    EXPECT_DOUBLE_EQ(CompactAnimation::smoothedLevel(1, 0), 0.92);
}

TEST(CompactLevel, StaysWhereItIsReached) {
    EXPECT_DOUBLE_EQ(CompactAnimation::smoothedLevel(0.4, 0.4), 0.4);
}

TEST(CompactSpectrum, WithAllBandsZeroEveryHeightConvergesToTheFloor) {
    std::vector<double> heights{0.0, 1.0};
    const std::vector<double> silence(2, 0.0);
    CompactAnimation::stepSpectrum(heights, silence, always(1.28));
    EXPECT_DOUBLE_EQ(heights[0], 0.65 * 0.06);
    EXPECT_DOUBLE_EQ(heights[1], 1.0 + 0.42 * (0.06 - 1.0));
    for (int frame = 0; frame < 60; ++frame) {
        CompactAnimation::stepSpectrum(heights, silence, always(0.72));
    }
    EXPECT_NEAR(heights[0], 0.06, 1e-9);
    EXPECT_NEAR(heights[1], 0.06, 1e-9);
}

TEST(CompactSpectrum, AFullBandGivesTheTopWhenTheJitterIsHighEnough) {
    const std::vector<double> full{1.0};
    const auto targetAt = [&](double jitter) {
        std::vector<double> heights{0.0};
        CompactAnimation::stepSpectrum(heights, full, always(jitter));
        return heights[0] / 0.65;
    };
    EXPECT_DOUBLE_EQ(targetAt(1.28), 1.0);
    EXPECT_DOUBLE_EQ(targetAt(0.94), 1.0);
    EXPECT_NEAR(targetAt(0.93), 0.99, 1e-12);
    EXPECT_NEAR(targetAt(0.72), 0.78, 1e-12);
}

TEST(CompactSpectrum, EveryBarHasAFreshJitterOfItsOwn) {
    Dice dice({1.0, 0.8});
    std::vector<double> heights{0.0, 0.0};
    CompactAnimation::stepSpectrum(heights, std::vector<double>{0.5, 0.5}, dice.random());
    EXPECT_DOUBLE_EQ(heights[0], 0.65 * 0.56);
    EXPECT_DOUBLE_EQ(heights[1], 0.65 * 0.46);
    EXPECT_EQ(dice.ranges, (std::vector<std::pair<double, double>>(2, {0.72, 1.28})));
}

TEST(CompactSpectrum, MissingBandsCountAsZero) {
    std::vector<double> heights{0.0, 0.0};
    CompactAnimation::stepSpectrum(heights, std::vector<double>{0.5}, always(1.0));
    EXPECT_DOUBLE_EQ(heights[0], 0.65 * 0.56);
    EXPECT_DOUBLE_EQ(heights[1], 0.65 * 0.06);
}

TEST(CompactWaiting, IsAWaveWithNoise) {
    Dice dice({0.2, 0.5, 0.5,       // noise; no spark; no jump
               0.1, 0.14, 0.3, 0.5, // noise; a spark of 0.3; no jump
               0.0, 0.15, 0.09, 0.9 /* no spark at the limit; a jump to 0.9 */});
    std::vector<double> heights{0.5, 0.0, 0.0};
    CompactAnimation::stepWaiting(heights, 330, dice.random());
    EXPECT_TRUE(dice.isUsedUp());
    EXPECT_DOUBLE_EQ(heights[0], 0.5 + 0.4 * (std::sin(330 / 200.0) * 0.25 + 0.1 + 0.2 - 0.5));
    EXPECT_DOUBLE_EQ(heights[1], 0.4 * (std::sin(0.7 + 330 / 200.0) * 0.25 + 0.1 + 0.1 + 0.3));
    EXPECT_DOUBLE_EQ(heights[2], 0.4 * 0.9);
    using Range = std::pair<double, double>;
    EXPECT_EQ(dice.ranges, (std::vector<Range>{{0, 0.25},
                                               {0, 1},
                                               {0, 1}, //
                                               {0, 0.25},
                                               {0, 1},
                                               {0, 0.4},
                                               {0, 1}, //
                                               {0, 0.25},
                                               {0, 1},
                                               {0, 1},
                                               {0.5, 0.9}}));
}

TEST(CompactWaiting, HeightsMayFallBelowZero) {
    std::vector<double> heights(96, 0.0);
    Dice dice([] {
        std::deque<double> numbers;
        for (int bar = 0; bar < 96; ++bar) {
            numbers.insert(numbers.end(), {0.0, 1.0, 1.0});
        }
        return numbers;
    }());
    CompactAnimation::stepWaiting(heights, 0, dice.random());
    EXPECT_LT(*std::min_element(heights.begin(), heights.end()), -0.05);
}

TEST(CompactPatterns, WithoutBarsThereIsNothingToDo) {
    std::vector<double> none;
    Dice dice({});
    CompactAnimation::stepSpectrum(none, std::vector<double>{1.0}, dice.random());
    CompactAnimation::stepWaiting(none, 0, dice.random());
    EXPECT_TRUE(dice.ranges.empty());
}
