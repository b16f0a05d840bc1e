#include "unit/views/ring/RingFormulas.h"
#include "views/ring/RingPalette.h"

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;
using ::testing::DoubleNear;
using ::testing::Pointwise;

namespace {

void expectColor(RingMode mode, double position, const RingColor& expected) {
    SCOPED_TRACE(position);
    const QColor color = waveLineColor(mode, position, 0);
    EXPECT_EQ(color.spec(), QColor::Rgb);
    EXPECT_EQ(color.alphaF(), 1);
    EXPECT_THAT((RingColor{color.redF(), color.greenF(), color.blueF()}),
                Pointwise(DoubleNear(2e-5), expected));
}

} // namespace

TEST(WaveLineColor, RunsThroughPinkPurpleAndMagentaWhileRecording) {
    expectColor(RingMode::recording, 0, {1, 0.2, 0.4});
    expectColor(RingMode::recording, 0.165, {1, 0.3, 0.5});
    expectColor(RingMode::recording, 0.33, {1, 0.4, 0.6});
    expectColor(RingMode::recording, 0.495, {0.9, 0.35, 0.7});
    expectColor(RingMode::recording, 0.66, {0.8, 0.3, 0.8});
    expectColor(RingMode::recording, 0.83, {0.9, 0.25, 0.6});
}

TEST(WaveLineColor, RunsThroughAmberWhileTranscribing) {
    expectColor(RingMode::transcribing, 0, {1, 0.6, 0.1});
    expectColor(RingMode::transcribing, 0.25, {1, 0.7, 0.25});
    expectColor(RingMode::transcribing, 0.5, {1, 0.8, 0.4});
    expectColor(RingMode::transcribing, 0.75, {0.9, 0.7, 0.25});
}

TEST(WaveLineColor, RunsThroughBlueVioletAndTealAtRest) {
    expectColor(RingMode::idle, 0, {0.02, 0.7, 0.95});
    expectColor(RingMode::idle, 0.165, {0.12, 0.55, 0.95});
    expectColor(RingMode::idle, 0.33, {0.22, 0.4, 0.95});
    expectColor(RingMode::idle, 0.495, {0.395, 0.3, 0.9});
    expectColor(RingMode::idle, 0.66, {0.57, 0.2, 0.85});
    expectColor(RingMode::idle, 0.83, {0.295, 0.45, 0.9});
}

TEST(WaveLineColor, WrapsNegativePositionsAndThoseAboveOne) {
    for (const RingMode mode : {RingMode::recording, RingMode::transcribing, RingMode::idle}) {
        for (int step = -37; step <= 37; ++step) {
            const double position = 0.1 * step + 0.03;
            expectColor(mode, position, colorByFormula(mode, position));
        }
    }
    EXPECT_EQ(waveLineColor(RingMode::idle, -0.25, 0), waveLineColor(RingMode::idle, 0.75, 0));
    EXPECT_EQ(waveLineColor(RingMode::idle, -3, 0), waveLineColor(RingMode::idle, 0, 0));
}

TEST(WaveLineColor, DependsOnTheSumOfTheLineAndTheAngle) {
    EXPECT_EQ(waveLineColor(RingMode::recording, 0.25, 0.5),
              waveLineColor(RingMode::recording, 0.75, 0));
    EXPECT_EQ(waveLineColor(RingMode::recording, 0.25, -0.5),
              waveLineColor(RingMode::recording, 0.75, 0));
}
