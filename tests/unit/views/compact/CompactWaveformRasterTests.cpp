#include "views/compact/CompactWaveformRaster.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

using namespace quorvin;

namespace {

constexpr QSizeF size(360, 48);
constexpr double panelWhite = 0.09;

QColor toColor(const RgbColor& color, double opacity) {
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(opacity));
}

QImage panel(double devicePixelRatio) {
    QImage image((size * devicePixelRatio).toSize(), QImage::Format_RGB32);
    image.fill(QColor::fromRgbF(panelWhite, panelWhite, panelWhite));
    return image;
}

/// The same by the painter's paths, on the panel.
QImage paintedByPaths(const WaveformDrawing& drawing, double devicePixelRatio) {
    QImage image = panel(devicePixelRatio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(devicePixelRatio, devicePixelRatio);
    for (const WaveformFill& fill : drawing.fills) {
        QPainterPath path;
        path.addRoundedRect(fill.rect, fill.cornerRadius, fill.cornerRadius);
        painter.fillPath(path, toColor(fill.color, fill.opacity));
    }
    for (const WaveformStroke& stroke : drawing.strokes) {
        QPainterPath path(drawing.line.front());
        for (const QPointF& point : drawing.line) {
            path.lineTo(point);
        }
        painter.strokePath(path, QPen(toColor(drawing.lineColor, stroke.opacity), stroke.width,
                                      Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    }
    return image;
}

QImage painted(const WaveformDrawing& drawing, double devicePixelRatio) {
    const PlacedImage placed = rasterized(drawing, size, devicePixelRatio);
    QImage image = panel(devicePixelRatio);
    QPainter(&image).drawImage(placed.rect.topLeft() * devicePixelRatio, placed.image);
    return image;
}

int greatestDifference(const QImage& a, const QImage& b) {
    int greatest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb left = a.pixel(x, y);
            const QRgb right = b.pixel(x, y);
            greatest = std::max({greatest, std::abs(qRed(left) - qRed(right)),
                                 std::abs(qGreen(left) - qGreen(right)),
                                 std::abs(qBlue(left) - qBlue(right))});
        }
    }
    return greatest;
}

WaveformDrawing someBars() {
    WaveformState state;
    state.isRecording = true;
    for (int i = 0; i < waveform::barCount; ++i) {
        state.barHeights.append(0.5 + 0.5 * std::sin(i * 0.9));
    }
    return waveform::drawing(state, size);
}

WaveformDrawing someLine() {
    WaveformState state;
    state.elapsed = 1234;
    state.accentColor = {0.23, 0.51, 0.96};
    return waveform::drawing(state, size);
}

class CompactWaveformRaster : public ::testing::TestWithParam<double> {};

} // namespace

TEST_P(CompactWaveformRaster, PaintsBarsAsPathsWould) {
    EXPECT_LE(
        greatestDifference(painted(someBars(), GetParam()), paintedByPaths(someBars(), GetParam())),
        12);
}

TEST_P(CompactWaveformRaster, StrokesTheLineAsPathsWould) {
    EXPECT_LE(
        greatestDifference(painted(someLine(), GetParam()), paintedByPaths(someLine(), GetParam())),
        16);
}

TEST_P(CompactWaveformRaster, TakesWholePixelsAndNoMoreThanTheLineNeeds) {
    const PlacedImage placed = rasterized(someLine(), size, GetParam());
    EXPECT_LE(placed.rect.height(), 15);
    const QRectF pixels(placed.rect.topLeft() * GetParam(), placed.rect.size() * GetParam());
    EXPECT_EQ(pixels, QRectF(pixels.toRect()));
    EXPECT_EQ(placed.image.size(), pixels.size().toSize());
}

INSTANTIATE_TEST_SUITE_P(Densities, CompactWaveformRaster, ::testing::Values(1.0, 1.5, 2.0),
                         [](const auto& density) {
                             return "Ratio" + std::to_string(std::lround(density.param * 10));
                         });

TEST(CompactWaveformRasterShapes, CutsWhatLiesOutsideTheCanvas) {
    WaveformDrawing drawing;
    drawing.fills.push_back({{-5, -5, 400, 60}, 3, {1, 0, 0}, 1});
    const PlacedImage placed = rasterized(drawing, size, 1);
    EXPECT_EQ(placed.rect, QRectF(QPointF(0, 0), size));
    EXPECT_EQ(placed.image.pixelColor(0, 0), QColor(255, 0, 0));
    EXPECT_EQ(placed.image.pixelColor(359, 47), QColor(255, 0, 0));
}

TEST(CompactWaveformRasterShapes, PaintsNothingForNothing) {
    EXPECT_TRUE(rasterized({}, size, 1).image.isNull());
}

TEST(CompactWaveformRasterShapes, CoversPixelsByTheShareOfTheirArea) {
    WaveformDrawing drawing;
    drawing.fills.push_back({{10.25, 10, 1.5, 2.5}, 0, {1, 1, 1}, 1});
    const PlacedImage placed = rasterized(drawing, size, 1);
    ASSERT_EQ(placed.rect, QRectF(10, 10, 2, 3));
    EXPECT_NEAR(qAlpha(placed.image.pixel(0, 0)), 191, 1); // three quarters
    EXPECT_NEAR(qAlpha(placed.image.pixel(1, 0)), 191, 1);
    EXPECT_NEAR(qAlpha(placed.image.pixel(0, 2)), 96, 1); // three eighths
}
