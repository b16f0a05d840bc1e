#include "support/VirtualScheduler.h"
#include "views/ring/WaveRingState.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;

namespace {

/// What the view tells the state.
struct Inputs {
    double level = 0;
    bool isRecording = false;
    bool isTranscribing = false;
    bool isEnabled = true;
};

/// A state with a view around it, in virtual time.
class WaveRingStateTest : public ::testing::Test {
public:
    ~WaveRingStateTest() override { state.disappear(); }

protected:
    WaveRingStateTest() {
        QObject::connect(&state, &WaveRingState::changed, [this] { ++ticks; });
        QObject::connect(&state, &WaveRingState::timerScheduled, [this](double fps) {
            ++timers;
            fireAfter(std::chrono::duration_cast<Scheduler::Duration>(
                std::chrono::duration<double>(1 / fps)));
        });
        QObject::connect(&state, &WaveRingState::timerDropped, [this] { ++timers; });
    }

    void appear(const Inputs& inputs = {}) {
        state.appear(inputs.level, inputs.isRecording, inputs.isTranscribing, inputs.isEnabled);
    }
    void update(const Inputs& inputs) {
        state.updateInputs(inputs.level, inputs.isRecording, inputs.isTranscribing,
                           inputs.isEnabled);
    }
    void tick(int times) {
        for (int i = 0; i < times; ++i) {
            state.tick();
        }
    }
    int ticksWithin(Scheduler::Duration duration) {
        const int before = ticks;
        // A little more than a whole number of intervals, which are rounded.
        scheduler.advance(duration + 1ms);
        return ticks - before;
    }

    WaveRingState state;
    int ticks = 0;
    int timers = 0; ///< how often one was scheduled or dropped
    VirtualScheduler scheduler;

private:
    void fireAfter(Scheduler::Duration interval) {
        scheduler.postDelayed(interval, [this, interval, timer = timers] {
            if (timer == timers) {
                fireAfter(interval);
                state.tick();
            }
        });
    }
};

constexpr Inputs recording{.isRecording = true};
constexpr Inputs transcribing{.isTranscribing = true};
constexpr Inputs both{.isRecording = true, .isTranscribing = true};
constexpr Inputs rest{};

} // namespace

TEST_F(WaveRingStateTest, StandsStillBeforeItAppears) {
    EXPECT_EQ(state.timer(), std::nullopt);
    EXPECT_EQ(ticksWithin(10s), 0);
    EXPECT_EQ(state.time(), 0);
    EXPECT_EQ(state.smoothLevel(), 0);
    EXPECT_EQ(state.peakLevel(), 0);
    EXPECT_EQ(state.breathPhase(), 0);
    EXPECT_EQ(state.impactPhase(), 0);
    EXPECT_FALSE(state.showImpact());
    EXPECT_FALSE(state.impactIsRecording());
}

TEST_F(WaveRingStateTest, TicksTwiceASecondAtRest) {
    appear();
    EXPECT_EQ(state.timer(), 2);
    EXPECT_EQ(ticksWithin(10s), 20);
    EXPECT_NEAR(state.time(), 20.0 / 60, 1e-12) << "a thirtieth of the time that passed";
    EXPECT_FALSE(state.showImpact());
}

TEST_F(WaveRingStateTest, TicksFifteenTimesASecondWhileRecording) {
    appear();
    update(recording);
    EXPECT_EQ(ticksWithin(10s), 150);
    EXPECT_NEAR(state.time(), 150.0 / 60, 1e-12) << "a quarter of the time that passed";
}

TEST_F(WaveRingStateTest, TicksFifteenTimesASecondWhileTranscribing) {
    appear();
    update(transcribing);
    EXPECT_EQ(ticksWithin(10s), 150);
    EXPECT_FALSE(state.showImpact());
    update(rest);
    EXPECT_EQ(ticksWithin(10s), 20);
}

TEST_F(WaveRingStateTest, AppearingDuringARecordingCountsAsItsStart) {
    appear(recording);
    EXPECT_EQ(state.timer(), 15);
    EXPECT_TRUE(state.showImpact());
    EXPECT_TRUE(state.impactIsRecording());
}

TEST_F(WaveRingStateTest, AppearingDuringATranscriptionTakesUpItsRateWithoutAShock) {
    appear(transcribing);
    EXPECT_EQ(state.timer(), 15);
    EXPECT_FALSE(state.showImpact());
}

TEST_F(WaveRingStateTest, AppearingWithATimerKeepsIt) {
    appear();
    const int before = timers;
    appear();
    EXPECT_EQ(timers, before);
}

TEST_F(WaveRingStateTest, StopsAndKeepsItsValuesWhenItDisappears) {
    appear({.level = 0.8, .isRecording = true});
    scheduler.advance(1s);
    state.disappear();
    const double time = state.time();
    const double level = state.smoothLevel();
    EXPECT_EQ(state.timer(), std::nullopt);
    EXPECT_EQ(ticksWithin(60s), 0);
    EXPECT_EQ(state.time(), time);
    EXPECT_EQ(state.smoothLevel(), level);
    EXPECT_TRUE(state.showImpact());

    const int before = timers;
    state.disappear();
    EXPECT_EQ(timers, before) << "there is none to drop";
}

TEST_F(WaveRingStateTest, AppearingAgainTakesUpTheRateOfWhatGoesOnNow) {
    for (const Inputs& before : {rest, recording, transcribing, both}) {
        for (const Inputs& now : {rest, recording, transcribing, both}) {
            appear(before);
            state.disappear();
            appear(now);
            EXPECT_EQ(state.timer(), now.isRecording || now.isTranscribing ? 15 : 2)
                << before.isRecording << before.isTranscribing << now.isRecording
                << now.isTranscribing;
            state.disappear();
            update(rest);
            state.disappear();
        }
    }
}

TEST_F(WaveRingStateTest, AppearingAgainDuringARecordingShocksAgain) {
    appear(recording);
    tick(40);
    state.disappear();
    ASSERT_FALSE(state.showImpact());
    appear(recording);
    EXPECT_TRUE(state.showImpact());
    EXPECT_TRUE(state.impactIsRecording());
    EXPECT_EQ(state.impactPhase(), 0);
}

TEST_F(WaveRingStateTest, ARecordingsEndDropsToTwoTicksASecondAtOnceSoItsShockTakes17Seconds) {
    appear(recording);
    update(rest);
    EXPECT_EQ(state.timer(), 2);
    EXPECT_TRUE(state.showImpact());
    EXPECT_FALSE(state.impactIsRecording());
    scheduler.advance(16s + 600ms);
    EXPECT_TRUE(state.showImpact());
    EXPECT_NEAR(state.impactPhase(), 0.99, 1e-9);
    scheduler.advance(500ms);
    EXPECT_FALSE(state.showImpact());
    EXPECT_EQ(state.impactPhase(), 1);
}

TEST_F(WaveRingStateTest, ATranscriptionCarriesTheShockOfTheEndWithinLittleMoreThanTwoSeconds) {
    appear(recording);
    const int before = timers;
    update(transcribing);
    EXPECT_EQ(timers, before) << "the rate stays, and so does the timer";
    EXPECT_FALSE(state.impactIsRecording());
    scheduler.advance(2s + 210ms);
    EXPECT_TRUE(state.showImpact());
    scheduler.advance(70ms);
    EXPECT_FALSE(state.showImpact());
    EXPECT_EQ(state.impactPhase(), 1);
}

TEST_F(WaveRingStateTest, AShockRunsBy3HundredthsATickAndIsOver) {
    appear(recording);
    tick(1);
    EXPECT_DOUBLE_EQ(state.impactPhase(), 0.03);
    tick(32);
    EXPECT_TRUE(state.showImpact());
    tick(1);
    EXPECT_FALSE(state.showImpact());
    EXPECT_EQ(state.impactPhase(), 1) << "and not 1.02";
    tick(10);
    EXPECT_EQ(state.impactPhase(), 1);
}

TEST_F(WaveRingStateTest, AShockGivesWayToTheNext) {
    appear(recording);
    tick(10);
    update(rest);
    EXPECT_EQ(state.impactPhase(), 0);
    EXPECT_FALSE(state.impactIsRecording());
    tick(1);
    update(recording);
    EXPECT_EQ(state.impactPhase(), 0);
    EXPECT_TRUE(state.impactIsRecording());
}

TEST_F(WaveRingStateTest, TranscribingDuringARecordingTouchesNeitherTimerNorShock) {
    appear(recording);
    tick(3);
    const int before = timers;
    for (const Inputs& inputs : {both, recording, both}) {
        update(inputs);
        EXPECT_EQ(timers, before);
        EXPECT_NEAR(state.impactPhase(), 0.09, 1e-12);
    }
    update(transcribing);
    EXPECT_EQ(timers, before) << "it goes on after the recording";
    update(rest);
    EXPECT_EQ(state.timer(), 2);
}

TEST_F(WaveRingStateTest, ATranscriptionThatCameAndWentDuringARecordingLeavesTheRateOfRest) {
    appear(recording);
    update(both);
    update(rest);
    EXPECT_EQ(state.timer(), 2);
}

TEST_F(WaveRingStateTest, ARecordingDuringATranscriptionKeepsTheTimer) {
    appear(transcribing);
    const int before = timers;
    update(both);
    EXPECT_EQ(timers, before);
    EXPECT_TRUE(state.showImpact());
}

TEST_F(WaveRingStateTest, LevelAndModelTouchNoTimerAndChangeNothingBeforeTheNextTick) {
    appear();
    const int before = timers;
    update({.level = 0.5, .isEnabled = false});
    update({.level = 0.9, .isEnabled = true});
    EXPECT_EQ(timers, before);
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(state.smoothLevel(), 0);
    EXPECT_EQ(state.peakLevel(), 0);
}

TEST_F(WaveRingStateTest, TheLevelRisesFastAndFallsSlowlyWhileRecording) {
    appear({.level = 0.8, .isRecording = true});
    tick(1);
    EXPECT_DOUBLE_EQ(state.smoothLevel(), 0.4);
    tick(1);
    EXPECT_DOUBLE_EQ(state.smoothLevel(), 0.6);
    update({.level = 0.1, .isRecording = true});
    tick(1);
    EXPECT_DOUBLE_EQ(state.smoothLevel(), 0.6 - 0.5 * 0.12);
}

TEST_F(WaveRingStateTest, TheLevelMovesSlowlyOtherwise) {
    for (const bool isTranscribing : {false, true}) {
        WaveRingState slow;
        slow.appear(0.8, false, isTranscribing, true);
        slow.tick();
        EXPECT_DOUBLE_EQ(slow.smoothLevel(), 0.12);
        slow.updateInputs(0, false, isTranscribing, true);
        slow.tick();
        EXPECT_DOUBLE_EQ(slow.smoothLevel(), 0.12 * 0.92);
    }
}

TEST_F(WaveRingStateTest, ThePeakIsTakenAtOnceAndDecaysUnlessTheLevelIsAboveIt) {
    appear({.level = 0.5, .isRecording = true});
    tick(1);
    EXPECT_EQ(state.peakLevel(), 0.5);
    tick(1);
    EXPECT_DOUBLE_EQ(state.peakLevel(), 0.48) << "a level equal to the peak is not above it";
    tick(1);
    EXPECT_EQ(state.peakLevel(), 0.5) << "but now it was";
    update({.level = 0, .isRecording = true});
    tick(2);
    EXPECT_DOUBLE_EQ(state.peakLevel(), 0.5 * 0.96 * 0.96);
}

TEST_F(WaveRingStateTest, BreathesAtRestAndFasterWhileTranscribingButNotWhileRecording) {
    appear();
    tick(3);
    EXPECT_NEAR(state.breathPhase(), 0.04, 1e-12);
    update(transcribing);
    tick(6);
    EXPECT_NEAR(state.breathPhase(), 0.29, 1e-12);
    update(recording);
    tick(100);
    EXPECT_NEAR(state.breathPhase(), 0.29, 1e-12);
    update(both);
    tick(12);
    EXPECT_NEAR(state.breathPhase(), 0.79, 1e-12) << "transcribing counts within a recording";
}
