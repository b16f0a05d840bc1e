#include "AppStateFixture.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using CompactMode = AppStateTest;

TEST_F(CompactMode, AtRestTheClockRunsInTenthsAndNothingMoves) {
    AppState& app = start();
    int heightChanges = 0;
    QObject::connect(&app, &AppState::compactBarHeightsChanged, [&] { ++heightChanges; });
    app.startCompactAnimation();
    scheduler.runPosted();
    EXPECT_DOUBLE_EQ(app.compactElapsed(), 100);
    scheduler.advance(900ms);
    EXPECT_DOUBLE_EQ(app.compactElapsed(), 1000);
    EXPECT_EQ(heightChanges, 0);
    EXPECT_EQ(app.compactBarHeights(), QList<double>(96, 0.03));
}

TEST_F(CompactMode, DuringATakeTheBarsRiseFromNothingAtThirtyFramesASecond) {
    AppState& app = start();
    app.startCompactAnimation();
    scheduler.runPosted();
    app.startRecording();
    EXPECT_EQ(app.compactBarHeights(), QList<double>(96, 0.0));
    EXPECT_DOUBLE_EQ(app.compactSmoothLevel(), 0);
    scheduler.advance(100ms); // the frame at rest was the last one
    const double before = app.compactElapsed();
    EXPECT_DOUBLE_EQ(app.compactBarHeights().first(), 0.65 * 0.06);
    int frames = 0;
    QObject::connect(&app, &AppState::compactBarHeightsChanged, [&] { ++frames; });
    scheduler.advance(330ms);
    EXPECT_DOUBLE_EQ(app.compactElapsed(), before + 330);
    EXPECT_EQ(frames, 10) << "one notice a frame";
}

TEST_F(CompactMode, TheLevelIsSmoothedFromFrameToFrame) {
    AppState& app = start();
    app.startRecording();
    setLevel(0.5);
    app.startCompactAnimation();
    scheduler.runPosted();
    EXPECT_NEAR(app.compactSmoothLevel(), 0.65 * app.audioLevel(), 1e-12);
}

TEST_F(CompactMode, DuringATranscriptionTheBarsWaitAlsoWhenANewTakeRuns) {
    AppState& app = start();
    holdEngine();
    app.startRecording();
    speak();
    app.stopRecording();
    scheduler.runPosted();
    ASSERT_TRUE(app.isTranscribing());
    app.startRecording();
    ASSERT_TRUE(app.isRecording());
    app.startCompactAnimation();
    scheduler.advance(33ms * 20);
    // The spectrum's bars would all stand at the same floor.
    const QList<double> heights = app.compactBarHeights();
    EXPECT_NE(*std::max_element(heights.begin(), heights.end()),
              *std::min_element(heights.begin(), heights.end()));
    app.cancelRecording();
    answerEngine(u"done"_s);
}

TEST_F(CompactMode, AfterATakeTheBarsStandStillUntilTheNext) {
    AppState& app = start();
    app.startCompactAnimation();
    app.startRecording();
    scheduler.advance(500ms);
    app.cancelRecording();
    scheduler.advance(100ms);
    const QList<double> heights = app.compactBarHeights();
    EXPECT_GT(heights.first(), 0.05);
    scheduler.advance(10s);
    EXPECT_EQ(app.compactBarHeights(), heights);
}

TEST_F(CompactMode, StartingAgainReplacesTheLoop) {
    AppState& app = start();
    app.startCompactAnimation();
    app.startCompactAnimation();
    scheduler.advance(1s);
    EXPECT_DOUBLE_EQ(app.compactElapsed(), 1100) << "the frame at once, and ten more";
}

TEST_F(CompactMode, WhenThePanelIsGoneNothingRuns) {
    AppState& app = start();
    app.startCompactAnimation();
    scheduler.advance(1s);
    app.stopCompactAnimation();
    const double elapsed = app.compactElapsed();
    scheduler.advance(10s);
    EXPECT_DOUBLE_EQ(app.compactElapsed(), elapsed);
}

TEST_F(CompactMode, TheLoopEndsWithTheProgram) {
    start().startCompactAnimation();
    scheduler.advance(1s);
    endProgram();
    scheduler.advance(30s); // the longest sleep
    EXPECT_EQ(scheduler.sleepers(), 0U);
}
