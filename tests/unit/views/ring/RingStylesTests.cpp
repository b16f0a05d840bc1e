#include "views/ring/RingStyles.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using Kind = RingShape::Kind;

namespace {

using DrawStyle = void (*)(RingPicture&, const RingFrame&, bool);

struct NamedStyle {
    QString name;
    DrawStyle draw;
};

const std::array styles{
    NamedStyle{u"wave"_s, drawWaveRing},   NamedStyle{u"pulse"_s, drawPulseRing},
    NamedStyle{u"comet"_s, drawCometRing}, NamedStyle{u"bars"_s, drawBarsRing},
    NamedStyle{u"orbit"_s, drawOrbitRing}, NamedStyle{u"nova"_s, drawNovaRing},
    NamedStyle{u"dna"_s, drawDNARing},     NamedStyle{u"plasma"_s, drawPlasmaRing},
    NamedStyle{u"radar"_s, drawRadarRing},
};

/// In the middle of something.
RingFrame busyFrame(RingMode mode) {
    return {.size = {320, 300},
            .mode = mode,
            .time = 7.3,
            .smoothLevel = 0.42,
            .peakLevel = 0.57,
            .breathPhase = 1.9};
}

RingFrame frameOf(RingMode mode) {
    return {.size = {300, 300}, .mode = mode};
}

RingPicture drawn(DrawStyle draw, const RingFrame& frame) {
    RingPicture picture;
    draw(picture, frame, false);
    return picture;
}

RingPicture drawn(const QString& animationStyle, const RingFrame& frame) {
    RingPicture picture;
    drawRing(picture, frame, animationStyle);
    return picture;
}

/// Whether two pictures are the same in every number.
bool areEqual(const RingPicture& a, const RingPicture& b) {
    return std::equal(a.shapes().begin(), a.shapes().end(), b.shapes().begin(), b.shapes().end(),
                      [&](const RingShape& left, const RingShape& right) {
                          const auto leftPoints = a.points(left);
                          const auto rightPoints = b.points(right);
                          return left.kind == right.kind && left.ink.color == right.ink.color &&
                                 left.ink.opacity == right.ink.opacity &&
                                 left.radius == right.radius && left.width == right.width &&
                                 std::equal(leftPoints.begin(), leftPoints.end(),
                                            rightPoints.begin(), rightPoints.end());
                      });
}

double distanceFromCenter(const QPointF& point) {
    return std::hypot(point.x() - 150, point.y() - 150);
}

} // namespace

TEST(RingStyles, AreChosenByNameAndNeverGlow) {
    const RingFrame frame = busyFrame(RingMode::recording);
    for (const auto& [name, draw] : styles) {
        EXPECT_TRUE(areEqual(drawn(name, frame), drawn(draw, frame))) << name.toStdString();
    }
}

TEST(RingStyles, AreWavesByAnyOtherName) {
    const RingFrame frame = busyFrame(RingMode::idle);
    for (const QString& name : {u""_s, u"Pulse"_s, u"waves"_s, u"dna "_s}) {
        EXPECT_TRUE(areEqual(drawn(name, frame), drawn(drawWaveRing, frame))) << name.toStdString();
    }
}

TEST(RingStyles, EndWithTheShockRingWhileItRuns) {
    for (const auto& [name, draw] : styles) {
        RingFrame frame = busyFrame(RingMode::recording);
        const std::size_t without = drawn(draw, frame).shapes().size();
        frame.showImpact = true;
        frame.impactPhase = 0.25;
        frame.impactIsRecording = true;
        const RingPicture picture = drawn(name, frame);
        ASSERT_EQ(picture.shapes().size(), without + 1) << name.toStdString();
        const RingShape& last = picture.shapes().back();
        EXPECT_EQ(last.kind, Kind::strokedCircle);
        EXPECT_EQ(picture.points(last).front(), QPointF(160, 150));
        EXPECT_EQ(last.ink.color, QColor(0xff, 0x33, 0x66));
        // 0.75 is left.
        EXPECT_DOUBLE_EQ(last.radius, 300 * (1 - 0.5625) / 2);
        EXPECT_DOUBLE_EQ(last.width, 5.5);
        EXPECT_DOUBLE_EQ(last.ink.opacity, 0.675);
    }
}

TEST(ShockRing, IsGreenWhenARecordingEnds) {
    RingFrame frame = frameOf(RingMode::idle);
    frame.showImpact = true;
    frame.impactPhase = 0.5;
    RingPicture picture;
    drawShockRing(picture, frame, false);
    drawShockRing(picture, frame, true);
    ASSERT_EQ(picture.shapes().size(), 2U);
    for (const RingShape& shape : picture.shapes()) {
        EXPECT_EQ(shape.ink.color, QColor(0x22, 0xc5, 0x5e));
        EXPECT_DOUBLE_EQ(shape.radius, 112.5);
        EXPECT_DOUBLE_EQ(shape.width, 4);
    }
    EXPECT_DOUBLE_EQ(picture.shapes()[0].ink.opacity, 0.45);
    EXPECT_DOUBLE_EQ(picture.shapes()[1].ink.opacity, 0.25) << "beneath a glow";
}

TEST(ShockRing, IsNotThereUnlessItRuns) {
    RingFrame frame = frameOf(RingMode::recording);
    frame.impactPhase = 0.5;
    EXPECT_TRUE(drawn(drawShockRing, frame).shapes().empty());
}

TEST(WaveRing, RipplesInSilenceWhileRecording) {
    const RingPicture silent = drawn(drawWaveRing, frameOf(RingMode::recording));
    // At time 0, on the first line, at an angle of 0: both cosines, and no sine.
    const double ripple = 0.20 + 0.15;
    const auto points = silent.points(silent.shapes().front());
    EXPECT_NEAR(points.front().x() - 150, 150 - 31 + 1.8 * ripple, 1e-9);
    EXPECT_NEAR(points.front().y(), 150, 1e-9);
}

TEST(WaveRing, IsOpaqueAtMost) {
    RingFrame frame = frameOf(RingMode::recording);
    frame.smoothLevel = 1.5;
    const RingPicture picture = drawn(drawWaveRing, frame);
    EXPECT_EQ(picture.shapes().at(14).ink.opacity, 1) << "and not 0.7 + 0.45";
    EXPECT_NEAR(picture.shapes().at(0).ink.opacity, 0.6, 1e-9);
}

TEST(PulseRing, HasNoMoreThanTwelveRingsHoweverLoudItIs) {
    const auto ringsAt = [](double level) {
        RingFrame frame = frameOf(RingMode::recording);
        frame.smoothLevel = level;
        return drawn(drawPulseRing, frame).shapes().size();
    };
    EXPECT_EQ(ringsAt(0), 7U);
    EXPECT_EQ(ringsAt(0.19), 7U);
    EXPECT_EQ(ringsAt(0.2), 8U);
    EXPECT_EQ(ringsAt(1), 12U);
    EXPECT_EQ(ringsAt(40), 12U);
}

TEST(PulseRing, LeavesOutRingsTooFaintToSee) {
    // The first ring's life is 1 - 0.04 t: its opacity falls below 0.01 with its life below 0.0458.
    RingFrame frame = frameOf(RingMode::idle);
    frame.time = 0.953 / 0.04;
    EXPECT_EQ(drawn(drawPulseRing, frame).shapes().size(), 7U);
    frame.time = 0.955 / 0.04;
    EXPECT_EQ(drawn(drawPulseRing, frame).shapes().size(), 6U);
}

TEST(PulseRing, WobblesOnlyWithALevel) {
    RingFrame frame = frameOf(RingMode::recording);
    frame.smoothLevel = 0.1;
    EXPECT_EQ(drawn(drawPulseRing, frame).shapes().front().kind, Kind::strokedCircle);
    frame.smoothLevel = 0.11;
    EXPECT_EQ(drawn(drawPulseRing, frame).shapes().front().kind, Kind::closedPath);
    frame.mode = RingMode::transcribing;
    EXPECT_EQ(drawn(drawPulseRing, frame).shapes().front().kind, Kind::strokedCircle);
}

TEST(PlasmaRing, HasTheseFourLayersTheFirstOfThemInvisible) {
    const RingPicture picture = drawn(drawPlasmaRing, frameOf(RingMode::idle));
    ASSERT_EQ(picture.shapes().size(), 5U * 4 + 1);
    const std::array opacities{0.0, 0.18 * 0.5, 0.18, 0.18 * 1.5};
    for (std::size_t layer = 0; layer < opacities.size(); ++layer) {
        const RingShape& shape = picture.shapes()[layer];
        EXPECT_NEAR(shape.radius, 16 * (1 - 0.2 * static_cast<double>(layer)), 1e-9);
        EXPECT_NEAR(shape.ink.opacity, opacities[layer], 1e-9);
    }
}

TEST(RadarRing, BlipsFadeOverAThirdOfATurnAndAreOutAtRest) {
    // A recording in silence sweeps 0.45 turns in a unit of time.
    const auto blipsAfter = [](RingMode mode, double turns) {
        RingFrame frame = frameOf(mode);
        frame.time = turns / 0.45;
        const RingPicture picture = drawn(drawRadarRing, frame);
        std::size_t blips = 0;
        for (const RingShape& shape : picture.shapes()) {
            blips += shape.kind == Kind::filledCircle && shape.radius != 3 ? 1 : 0;
        }
        return blips;
    };
    EXPECT_EQ(blipsAfter(RingMode::recording, 0.3), 3U) << "at 0, 0.125 and 0.25 of a turn";
    EXPECT_EQ(blipsAfter(RingMode::recording, 0.34), 2U) << "the first is out";
    EXPECT_EQ(blipsAfter(RingMode::recording, 1.01), 3U) << "at 0, 0.875 and 0.75";
    EXPECT_EQ(blipsAfter(RingMode::idle, 0.3), 0U);
}

TEST(BarsRing, TakesANegativeRadiusOnASurfaceTooSmallForIt) {
    RingFrame frame = frameOf(RingMode::idle);
    frame.size = {80, 80};
    const RingPicture picture = drawn(drawBarsRing, frame);
    EXPECT_EQ(picture.shapes().front().radius, -5);
    EXPECT_EQ(picture.points(picture.shapes()[1]).front(), QPointF(35, 40));
}

TEST(CometRing, HasLongerTailsTheLouderItIs) {
    RingFrame frame = frameOf(RingMode::recording);
    constexpr std::size_t heads = 3 * 4;
    EXPECT_EQ(drawn(drawCometRing, frame).shapes().size(), 44 + 36 + 26 + heads);
    frame.smoothLevel = 0.99;
    EXPECT_EQ(drawn(drawCometRing, frame).shapes().size(), 44 + 36 + 26 + 3 * 17 + heads);
}

TEST(DNARing, MissesItsNodesAtRestButMeetsThemWhileRecording) {
    // The second node's segment begins where the first node is.
    const auto gap = [](RingMode mode) {
        RingFrame frame = busyFrame(mode);
        const RingPicture picture = drawn(drawDNARing, frame);
        const QPointF node = picture.points(picture.shapes()[0])[0];
        const QPointF begin = picture.points(picture.shapes()[3])[0];
        return std::hypot(node.x() - begin.x(), node.y() - begin.y());
    };
    EXPECT_NEAR(gap(RingMode::recording), 0, 1e-9);
    EXPECT_GT(gap(RingMode::idle), 0.5);
    EXPECT_GT(gap(RingMode::transcribing), 0.5);
}

TEST(OrbitRing, SpreadsItsOrbitsWithTheLevel) {
    RingFrame frame = frameOf(RingMode::recording);
    frame.smoothLevel = 1;
    frame.peakLevel = 1;
    const RingPicture picture = drawn(drawOrbitRing, frame);
    EXPECT_NEAR(picture.shapes()[0].radius, 150.0 / 140 * (55 + 55.0 / 132 * 24), 1e-9);
    EXPECT_NEAR(distanceFromCenter(picture.points(picture.shapes().back())[0]),
                150.0 / 140 * (132 + 24), 1e-9);
}
