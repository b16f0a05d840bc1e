#include "views/ring/MicLevelRingCanvas.h"
#include "views/support/ViewTest.h"

#include <QQmlEngine>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Tells how often it has been painted.
class CountingCanvas : public MicLevelRingCanvas {
public:
    using MicLevelRingCanvas::MicLevelRingCanvas;

    [[nodiscard]] PlacedImage drawn(double devicePixelRatio) const override {
        ++paints;
        return MicLevelRingCanvas::drawn(devicePixelRatio);
    }

    mutable int paints = 0;
};

class MicLevelRingCanvasTest : public ViewTest {
protected:
    MicLevelRingCanvasTest() {
        qmlRegisterType<CountingCanvas>("RingTest", 1, 0, "CountingCanvas");
        show(uR"(
            import RingTest

            Item {
                width: 300
                height: 300

                property alias ticks: timer.ticks

                CountingCanvas {
                    id: canvas
                    objectName: "canvas"
                    anchors.fill: parent
                    isShown: true
                    onTimerScheduled: interval => { timer.interval = interval; timer.restart(); }
                    onTimerDropped: timer.stop()
                }
                Timer {
                    id: timer
                    property int ticks
                    repeat: true
                    onTriggered: { ++ticks; canvas.tick(); }
                }
            })"_s);
        (void)grab();
    }

    CountingCanvas& canvas() { return dynamic_cast<CountingCanvas&>(*item(u"canvas"_s)); }
    int ticks() { return root()->property("ticks").toInt(); }
    /// Lets the scene render sixty times a second; it paints what has asked for it.
    void render(std::chrono::milliseconds duration) {
        for (; duration > 0ms; duration -= 16ms) {
            advance(16ms);
            (void)grab();
        }
    }
};

} // namespace

TEST_F(MicLevelRingCanvasTest, IsPaintedOnceForEachTickAndNotInBetween) {
    int paints = canvas().paints;
    render(4s);
    EXPECT_EQ(canvas().paints - paints, ticks());
    EXPECT_NEAR(ticks(), 8, 1);

    canvas().setIsRecording(true);
    render(16ms);
    paints = canvas().paints;
    const int before = ticks();
    render(4s);
    EXPECT_EQ(canvas().paints - paints, ticks() - before);
    EXPECT_NEAR(ticks() - before, 60, 2);
}

TEST_F(MicLevelRingCanvasTest, IsNotPaintedForALevel) {
    canvas().setIsRecording(true);
    render(80ms);
    const int paints = canvas().paints;
    const int before = ticks();
    for (int frame = 0; frame < 120; ++frame) {
        canvas().setLevel(0.008 * frame);
        canvas().setIsEnabled(frame % 2 == 0);
        render(16ms);
    }
    EXPECT_EQ(canvas().paints - paints, ticks() - before);
    EXPECT_NEAR(ticks() - before, 28, 2);
}

TEST_F(MicLevelRingCanvasTest, IsPaintedAnewForAnotherModeOrStyle) {
    const auto isPaintedAfter = [this](auto change) {
        const int paints = canvas().paints;
        const QImage before = grab();
        change(canvas());
        const bool hasChanged = grab() != before;
        return hasChanged && canvas().paints == paints + 1;
    };
    EXPECT_TRUE(isPaintedAfter([](CountingCanvas& ring) { ring.setIsTranscribing(true); }));
    EXPECT_TRUE(isPaintedAfter([](CountingCanvas& ring) { ring.setIsRecording(true); }));
    EXPECT_TRUE(isPaintedAfter([](CountingCanvas& ring) { ring.setAnimationStyle(u"dna"_s); }));
    EXPECT_FALSE(isPaintedAfter([](CountingCanvas& ring) { ring.setIsTranscribing(false); }))
        << "a recording looks the same with a transcription";
}

TEST_F(MicLevelRingCanvasTest, IsNotPaintedWhileItCantBeSeen) {
    canvas().setIsRecording(true);
    render(1s);
    canvas().setIsShown(false);
    const int paints = canvas().paints;
    const int before = ticks();
    canvas().setLevel(0.7);
    render(2s);
    EXPECT_EQ(canvas().paints, paints);
    EXPECT_EQ(ticks(), before);
    canvas().setIsShown(true);
    render(2s);
    EXPECT_NEAR(ticks() - before, 30, 2);
}

TEST_F(MicLevelRingCanvasTest, HasAPixelForEachOfTheScreen) {
    for (const double devicePixelRatio : {1.0, 1.25, 2.0}) {
        const PlacedImage placed = canvas().drawn(devicePixelRatio);
        EXPECT_EQ(placed.image.size(), (QSizeF(300, 300) * devicePixelRatio).toSize());
        EXPECT_EQ(placed.rect, QRectF(0, 0, 300, 300));
    }
}

TEST_F(MicLevelRingCanvasTest, RunsTheShockRingOutward) {
    canvas().setAnimationStyle(u"nova"_s); // which leaves the upper edge free at rest
    canvas().setIsRecording(true);
    render(300ms);
    canvas().setIsRecording(false);
    const auto greenAt = [this](int distance) {
        const QColor pixel = color({150 + distance, 150}); // on white
        return pixel.green() > pixel.red() + 60 && pixel.green() > pixel.blue() + 40;
    };
    for (int tick = 0; tick < 10; ++tick) {
        canvas().tick();
    }
    // 0.7 is left: 300 (1 - 0.49) / 2 from the centre.
    EXPECT_TRUE(greenAt(76));
    EXPECT_FALSE(greenAt(90));
    for (int tick = 0; tick < 24; ++tick) {
        canvas().tick();
    }
    EXPECT_FALSE(greenAt(76));
    EXPECT_FALSE(greenAt(149)) << "it is over";
}
