#include "views/components/DampedSpring.h"
#include "views/support/ViewTest.h"

#include <cmath>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

/// The equation of motion, x'' = -k x - c x', integrated in steps of a microsecond.
DampedSpring::State integrated(double response, double damping, DampedSpring::State state,
                               double seconds) {
    const double stiffness = std::pow(2 * M_PI / response, 2);
    const double friction = 4 * M_PI * damping / response;
    constexpr double step = 1e-6;
    for (int i = 0; i < std::lround(seconds / step); ++i) {
        state.velocity += step * (-stiffness * state.offset - friction * state.velocity);
        state.offset += step * state.velocity;
    }
    return state;
}

struct Sort {
    double response;
    double damping;
};

class DampedSpringTest : public ::testing::TestWithParam<Sort> {};

using SpringItem = ViewTest;

} // namespace

TEST_P(DampedSpringTest, ObeysTheEquationOfMotion) {
    const auto [response, damping] = GetParam();
    const DampedSpring spring{response, damping};
    for (const double seconds : {0.016, 0.05, 0.1, 0.25}) {
        const DampedSpring::State start{.offset = -1, .velocity = 4};
        const auto expected = integrated(response, damping, start, seconds);
        const auto actual = spring.after(start, seconds);
        EXPECT_NEAR(actual.offset, expected.offset, 1e-3) << seconds;
        EXPECT_NEAR(actual.velocity, expected.velocity, 3e-2) << seconds;
    }
}

TEST_P(DampedSpringTest, ManyFramesComeToTheSameAsOne) {
    const auto [response, damping] = GetParam();
    const DampedSpring spring{response, damping};
    DampedSpring::State state{.offset = 1, .velocity = 0};
    for (int frame = 0; frame < 10; ++frame) {
        state = spring.after(state, 0.016);
    }
    EXPECT_NEAR(state.offset, spring.after({.offset = 1, .velocity = 0}, 0.16).offset, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(OfTheViews, DampedSpringTest,
                         ::testing::Values(Sort{0.2, 0.5}, Sort{0.3, 0.6}, Sort{0.3, 0.7},
                                           Sort{0.16, 0.5}, Sort{0.5, 1.0}));

TEST_F(SpringItem, BeginsAtRest) {
    show(u"Item { property real aim: 1; property alias value: spring.value;"
         "Spring { id: spring; to: aim; response: 0.3; damping: 0.7 } }"_s);
    EXPECT_EQ(root()->property("value").toDouble(), 1);
}

TEST_F(SpringItem, GoesPastItsAimAndComesToRestOnIt) {
    show(
        u"Item { property real aim: 0; property alias value: spring.value; property int changes;"
        "Spring { id: spring; to: aim; response: 0.3; damping: 0.5; onValueChanged: ++changes } }"_s);
    root()->setProperty("aim", 1);
    double highest = 0;
    for (int frame = 0; frame < 100; ++frame) {
        advance(16ms);
        highest = std::max(highest, root()->property("value").toDouble());
    }
    // exp(-pi damping / sqrt(1 - damping^2)) beyond the aim
    EXPECT_NEAR(highest, 1.163, 0.01);
    EXPECT_EQ(root()->property("value").toDouble(), 1);
    const int changes = root()->property("changes").toInt();
    advance(500ms);
    EXPECT_EQ(root()->property("changes").toInt(), changes) << "at rest nothing happens";
}

TEST_F(SpringItem, ANewAimKeepsTheSpeed) {
    show(u"Item { property real aim: 0; property alias value: spring.value;"
         "Spring { id: spring; to: aim; response: 0.3; damping: 0.7 } }"_s);
    const auto value = [this] { return root()->property("value").toDouble(); };
    root()->setProperty("aim", 1);
    advance(16ms);
    advance(16ms);
    advance(16ms);
    const double before = value();
    root()->setProperty("aim", 0);
    EXPECT_EQ(value(), before) << "no jump";
    advance(16ms);
    EXPECT_GT(value(), before) << "it still goes up";
    advance(1s);
    EXPECT_EQ(value(), 0);
}
