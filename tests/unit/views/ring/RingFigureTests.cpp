#include "unit/views/ring/RingFormulas.h"
#include "views/ring/RingStyles.h"

#include <map>
#include <string>
#include <tuple>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;
using ::testing::Combine;
using ::testing::DoubleNear;
using ::testing::Pointwise;
using ::testing::Values;

namespace {

constexpr double tolerance = 1e-9;
constexpr double colorTolerance = 2e-5; // a channel has 16 bits

using DrawStyle = void (*)(RingPicture&, const RingFrame&, bool);

const std::map<std::string, DrawStyle> styles{
    {"wave", drawWaveRing}, {"pulse", drawPulseRing},   {"comet", drawCometRing},
    {"bars", drawBarsRing}, {"orbit", drawOrbitRing},   {"nova", drawNovaRing},
    {"dna", drawDNARing},   {"plasma", drawPlasmaRing}, {"radar", drawRadarRing},
};

/// In silence, in speech, at its loudest, and after an hour in a surface that is no square.
const std::array frames{
    RingFrame{.size = {300, 300}, .time = 0.5},
    RingFrame{.size = {300, 300},
              .time = 7.3,
              .smoothLevel = 0.42,
              .peakLevel = 0.57,
              .breathPhase = 1.9},
    RingFrame{
        .size = {300, 300}, .time = 41.7, .smoothLevel = 1, .peakLevel = 1, .breathPhase = 6.1},
    RingFrame{.size = {320, 280},
              .time = 903.1,
              .smoothLevel = 0.07,
              .peakLevel = 0.2,
              .breathPhase = 722.4},
};

void expectShape(const RingPicture& picture, const RingShape& shape, const FormulaShape& expected) {
    EXPECT_EQ(shape.kind, expected.kind);
    EXPECT_NEAR(shape.radius, expected.radius, tolerance);
    EXPECT_NEAR(shape.width, expected.width, tolerance);
    EXPECT_NEAR(shape.ink.opacity, expected.opacity, tolerance);
    EXPECT_EQ(shape.ink.color.alphaF(), 1);
    const RingColor color{shape.ink.color.redF(), shape.ink.color.greenF(),
                          shape.ink.color.blueF()};
    EXPECT_THAT(color, Pointwise(DoubleNear(colorTolerance), expected.color));

    const auto points = picture.points(shape);
    ASSERT_EQ(points.size(), expected.points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_NEAR(points[i].x(), expected.points[i].x(), tolerance) << i;
        EXPECT_NEAR(points[i].y(), expected.points[i].y(), tolerance) << i;
    }
}

class RingFigure : public ::testing::TestWithParam<std::tuple<const char*, RingMode>> {
protected:
    static void expectAsByFormula(bool isGlow) {
        const auto& [style, mode] = GetParam();
        for (std::size_t i = 0; i < frames.size(); ++i) {
            RingFrame frame = frames[i];
            frame.mode = mode;
            RingPicture picture;
            styles.at(style)(picture, frame, isGlow);
            const std::vector<FormulaShape> expected = shapesByFormula(style, frame, isGlow);
            ASSERT_EQ(picture.shapes().size(), expected.size()) << "frame " << i;
            for (std::size_t shape = 0; shape < expected.size(); ++shape) {
                SCOPED_TRACE(::testing::Message() << "frame " << i << ", shape " << shape);
                expectShape(picture, picture.shapes()[shape], expected[shape]);
                if (HasFailure()) {
                    return; // the first that is wrong tells enough
                }
            }
        }
    }
};

std::string nameOf(const ::testing::TestParamInfo<RingFigure::ParamType>& info) {
    const auto& [style, mode] = info.param;
    return std::string(style) + (mode == RingMode::recording      ? "Recording"
                                 : mode == RingMode::transcribing ? "Transcribing"
                                                                  : "Idle");
}

} // namespace

TEST_P(RingFigure, IsMadeOfTheShapesOfItsFormula) {
    expectAsByFormula(false);
}

TEST_P(RingFigure, GlowsInTheShapesOfItsFormula) {
    expectAsByFormula(true);
}

INSTANTIATE_TEST_SUITE_P(
    Styles, RingFigure,
    Combine(Values("wave", "pulse", "comet", "bars", "orbit", "nova", "dna", "plasma", "radar"),
            Values(RingMode::recording, RingMode::transcribing, RingMode::idle)),
    nameOf);
