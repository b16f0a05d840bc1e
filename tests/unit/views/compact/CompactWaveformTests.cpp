#include "views/compact/CompactWaveform.h"

#include <cmath>

#include <gmock/gmock.h>

using namespace quorvin;
using ::testing::AllOf;
using ::testing::DoubleNear;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

constexpr double tolerance = 1e-9;
constexpr QSizeF canvas(360, 48);
constexpr double step = 340.0 / 96;
constexpr double barWidth = 1.5; // 0.42 steps are a little less

auto isColor(double red, double green, double blue) {
    return AllOf(Field(&RgbColor::red, DoubleNear(red, tolerance)),
                 Field(&RgbColor::green, DoubleNear(green, tolerance)),
                 Field(&RgbColor::blue, DoubleNear(blue, tolerance)));
}

void expectRect(const QRectF& rect, double x, double y, double width, double height) {
    EXPECT_NEAR(rect.x(), x, tolerance);
    EXPECT_NEAR(rect.y(), y, tolerance);
    EXPECT_NEAR(rect.width(), width, tolerance);
    EXPECT_NEAR(rect.height(), height, tolerance);
}

WaveformState recording(const QList<double>& heights) {
    WaveformState state;
    state.barHeights = heights;
    state.isRecording = true;
    return state;
}

WaveformState transcribing(const QList<double>& heights, double elapsed) {
    WaveformState state;
    state.barHeights = heights;
    state.isTranscribing = true;
    state.elapsed = elapsed;
    return state;
}

QList<double> allBars(double height) {
    return QList<double>(waveform::barCount, height);
}

enum Layer : std::size_t { bloom, halo, core, upperCap, lowerCap };

const WaveformFill& fillOf(const WaveformDrawing& drawing, std::size_t bar, Layer layer) {
    return drawing.fills.at(bar * waveform::fillsPerBar + layer);
}

double heightOfBar(const WaveformDrawing& drawing, std::size_t bar) {
    return fillOf(drawing, bar, core).rect.height();
}

} // namespace

TEST(NeonRGB, GivesTheColourOfEachStop) {
    EXPECT_THAT(waveform::neonRGB(0), isColor(0.00, 0.95, 1.00));
    EXPECT_THAT(waveform::neonRGB(0.28), isColor(0.20, 0.55, 1.00));
    EXPECT_THAT(waveform::neonRGB(0.52), isColor(0.65, 0.25, 1.00));
    EXPECT_THAT(waveform::neonRGB(0.76), isColor(0.95, 0.18, 0.95));
    EXPECT_THAT(waveform::neonRGB(1), isColor(1.00, 0.24, 0.74));
}

TEST(NeonRGB, MixesBetweenTwoStops) {
    EXPECT_THAT(waveform::neonRGB(0.14), isColor(0.10, 0.75, 1.00));
    EXPECT_THAT(waveform::neonRGB(0.64), isColor(0.80, 0.215, 0.975));
    EXPECT_THAT(waveform::neonRGB(0.94), isColor(0.9875, 0.225, 0.7925));
}

TEST(Waveform, DrawsFiveFillsForEachOfThe96BarsAndNoLine) {
    const WaveformDrawing drawing = waveform::drawing(recording(allBars(0.5)), canvas);
    EXPECT_THAT(drawing.fills, SizeIs(480));
    EXPECT_THAT(drawing.line, IsEmpty());
}

TEST(Waveform, PlacesTheLayersOfABar) {
    const WaveformDrawing drawing = waveform::drawing(recording(allBars(0.5)), canvas);
    constexpr double half = 48 * 0.46 * 0.5;
    const double x = 10 + step * 10.5 - barWidth / 2;
    expectRect(fillOf(drawing, 10, bloom).rect, x - 2.85, 24 - half * 1.3 - 4, 7.2, half * 2.6 + 8);
    expectRect(fillOf(drawing, 10, halo).rect, x - 1.275, 24 - half - 2, 4.05, half * 2 + 4);
    expectRect(fillOf(drawing, 10, core).rect, x, 24 - half, 1.5, half * 2);
    expectRect(fillOf(drawing, 10, upperCap).rect, x, 24 - half, 1.5, half * 0.22);
    expectRect(fillOf(drawing, 10, lowerCap).rect, x, 24 + half - half * 0.22, 1.5, half * 0.22);
    EXPECT_NEAR(fillOf(drawing, 10, bloom).cornerRadius, 3.3, tolerance);
}

TEST(Waveform, WidensTheBarsWithTheCanvas) {
    const WaveformDrawing drawing = waveform::drawing(recording(allBars(0.5)), {980, 48});
    EXPECT_NEAR(fillOf(drawing, 0, core).rect.width(), 10 * 0.42, tolerance);
    EXPECT_NEAR(fillOf(drawing, 95, core).rect.center().x(), 965, tolerance);
}

TEST(Waveform, ShinesMoreTheHigherTheBar) {
    const WaveformDrawing drawing = waveform::drawing(recording(allBars(0.5)), canvas);
    EXPECT_NEAR(fillOf(drawing, 3, bloom).opacity, 0.15, tolerance);
    EXPECT_NEAR(fillOf(drawing, 3, halo).opacity, 0.41, tolerance);
    EXPECT_NEAR(fillOf(drawing, 3, core).opacity, 0.98, tolerance);
    EXPECT_EQ(fillOf(drawing, 3, upperCap).opacity, 1);
    EXPECT_EQ(fillOf(drawing, 3, lowerCap).opacity, 1);
}

TEST(Waveform, DimsTheColourOfLowBarsAndWhitensTheCaps) {
    const WaveformDrawing drawing = waveform::drawing(recording(allBars(0.5)), canvas);
    for (const Layer layer : {bloom, halo, core}) {
        EXPECT_THAT(fillOf(drawing, 0, layer).color, isColor(0, 0.95 * 0.94, 0.94));
    }
    constexpr double white = 0.16 + 0.5 * 0.55;
    const auto lifted = [](double channel) { return channel + white * (1 - channel); };
    for (const Layer layer : {upperCap, lowerCap}) {
        EXPECT_THAT(fillOf(drawing, 95, layer).color,
                    isColor(lifted(0.94), lifted(0.24 * 0.94), lifted(0.74 * 0.94)));
    }
}

TEST(Waveform, KeepsEveryBarAtLeastFourPointsHigh) {
    const WaveformDrawing drawing = waveform::drawing(recording(allBars(0)), canvas);
    EXPECT_NEAR(heightOfBar(drawing, 0), 4, tolerance);
    EXPECT_NEAR(fillOf(drawing, 0, upperCap).rect.height(), 1, tolerance);
}

TEST(Waveform, DrawsNoBarsAsBarsOfZero) {
    const WaveformDrawing none = waveform::drawing(recording({}), canvas);
    const WaveformDrawing zeros = waveform::drawing(recording(allBars(0)), canvas);
    ASSERT_EQ(none.fills.size(), zeros.fills.size());
    for (std::size_t i = 0; i < none.fills.size(); ++i) {
        EXPECT_EQ(none.fills[i].rect, zeros.fills[i].rect);
        EXPECT_EQ(none.fills[i].color, zeros.fills[i].color);
        EXPECT_EQ(none.fills[i].opacity, zeros.fills[i].opacity);
    }
}

TEST(Waveform, RepeatsTheLastBarOfAShortList) {
    const WaveformDrawing drawing = waveform::drawing(recording({0.2, 0.8}), canvas);
    EXPECT_NEAR(heightOfBar(drawing, 0), 48 * 0.46 * 0.2 * 2, tolerance);
    EXPECT_NEAR(heightOfBar(drawing, 1), 48 * 0.46 * 0.8 * 2, tolerance);
    EXPECT_NEAR(heightOfBar(drawing, 95), 48 * 0.46 * 0.8 * 2, tolerance);
}

TEST(Waveform, DrawsAValueAboveOneAsOneAndBelowZeroAsZero) {
    const WaveformDrawing drawing =
        waveform::drawing(recording({3.0, -0.15, std::nan("")}), canvas);
    EXPECT_NEAR(heightOfBar(drawing, 0), 48 * 0.92, tolerance);
    EXPECT_NEAR(heightOfBar(drawing, 1), 4, tolerance);
    EXPECT_NEAR(heightOfBar(drawing, 2), 4, tolerance);
    EXPECT_NEAR(fillOf(drawing, 0, bloom).opacity, 0.24, tolerance);
}

TEST(Waveform, RunsAHighlightOverTheBarsWhileTranscribing) {
    const WaveformDrawing drawing = waveform::drawing(transcribing(allBars(1), 3500), canvas);
    EXPECT_NEAR(heightOfBar(drawing, 48), 48 * 0.92 * 0.9, tolerance);
    EXPECT_NEAR(heightOfBar(drawing, 60), 48 * 0.92 * ((1 - 3.5 * 0.125) * 0.6 + 0.3), tolerance);
    EXPECT_NEAR(heightOfBar(drawing, 36), heightOfBar(drawing, 60), tolerance);
    EXPECT_NEAR(heightOfBar(drawing, 0), 48 * 0.92 * 0.3, tolerance);
}

TEST(Waveform, KeepsTheHighlightWhenANewTakeRunsDuringATranscription) {
    WaveformState state = transcribing(allBars(1), 0);
    state.isRecording = true;
    EXPECT_NEAR(heightOfBar(waveform::drawing(state, canvas), 95), 48 * 0.92 * 0.3, tolerance);
}

TEST(IdleLine, RunsThrough65PointsWithoutAnyBar) {
    WaveformState state;
    state.barHeights = allBars(1);
    state.elapsed = 2000;
    const WaveformDrawing drawing = waveform::drawing(state, canvas);
    EXPECT_THAT(drawing.fills, IsEmpty());
    ASSERT_THAT(drawing.line, SizeIs(65));
    EXPECT_NEAR(drawing.line[0].x(), 16, tolerance);
    EXPECT_NEAR(drawing.line[64].x(), 344, tolerance);
    EXPECT_NEAR(drawing.line[0].y(), 24 + std::sin(1.8) * 2.5 + std::sin(1.8 * 2.1 + 0.4),
                tolerance);
    constexpr double angle = 1.8 + 32 * 0.07;
    EXPECT_NEAR(drawing.line[32].x(), 180, tolerance);
    EXPECT_NEAR(drawing.line[32].y(), 24 + std::sin(angle) * 2.5 + std::sin(angle * 2.1 + 0.4),
                tolerance);
}

TEST(IdleLine, IsStrokedThreeTimesInTheAccentColour) {
    WaveformState state;
    state.accentColor = {0.1, 0.2, 0.3};
    const WaveformDrawing drawing = waveform::drawing(state, canvas);
    EXPECT_THAT(drawing.lineColor, isColor(0.1, 0.2, 0.3));
    ASSERT_THAT(drawing.strokes, SizeIs(3));
    EXPECT_EQ(drawing.strokes[0].width, 6.0);
    EXPECT_EQ(drawing.strokes[0].opacity, 0.05);
    EXPECT_EQ(drawing.strokes[1].width, 4.0);
    EXPECT_EQ(drawing.strokes[1].opacity, 0.04);
    EXPECT_EQ(drawing.strokes[2].width, 1.0);
    EXPECT_EQ(drawing.strokes[2].opacity, 0.18);
}

TEST(WaveformBounds, HoldTheLineWithItsWidestStroke) {
    WaveformDrawing drawing;
    drawing.line = {{16, 20}, {100, 30}, {344, 25}};
    drawing.strokes = {{6, 1}, {1, 1}};
    EXPECT_EQ(drawing.bounds(), QRectF(16, 17, 328, 16));
}

TEST(WaveformBounds, HoldEveryFill) {
    const WaveformDrawing drawing = waveform::drawing(recording({1.0, 0.0}), canvas);
    const QRectF bounds = drawing.bounds();
    for (const WaveformFill& fill : drawing.fills) {
        EXPECT_TRUE(bounds.contains(fill.rect));
    }
    EXPECT_NEAR(bounds.height(), 48 * 0.46 * 2.6 + 8, tolerance);
}
