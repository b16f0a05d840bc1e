#include "views/compact/StatusDotLook.h"

#include <gtest/gtest.h>

using namespace quorvin;

using DotState = StatusDotLook::DotState;

TEST(StatusDotState, PutsTheTakeBeforeEverything) {
    EXPECT_EQ(StatusDotLook::dotState(true, true, false, false, false), DotState::recording);
}

TEST(StatusDotState, PutsTheTranscriptionBeforeWhatIsMissing) {
    EXPECT_EQ(StatusDotLook::dotState(false, true, false, false, false), DotState::transcribing);
}

TEST(StatusDotState, PutsPermissionsBeforeTheModel) {
    EXPECT_EQ(StatusDotLook::dotState(false, false, false, true, false), DotState::noPermission);
    EXPECT_EQ(StatusDotLook::dotState(false, false, true, false, true), DotState::noPermission);
    EXPECT_EQ(StatusDotLook::dotState(false, false, true, true, false), DotState::noModel);
}

TEST(StatusDotState, IsReadyWhenNothingIsMissing) {
    EXPECT_EQ(StatusDotLook::dotState(false, false, true, true, true), DotState::ready);
}

TEST(StatusDotLook, HasAColourForEachState) {
    EXPECT_EQ(StatusDotLook::color(DotState::recording), QColor::fromRgbF(1.0F, 0.18F, 0.18F));
    EXPECT_EQ(StatusDotLook::color(DotState::transcribing), QColor::fromRgbF(1.0F, 0.6F, 0.1F));
    EXPECT_EQ(StatusDotLook::color(DotState::ready), QColor::fromRgbF(0.2F, 1.0F, 0.45F));
    EXPECT_EQ(StatusDotLook::color(DotState::noPermission), QColor::fromRgbF(0.25F, 0.55F, 1.0F));
    EXPECT_EQ(StatusDotLook::color(DotState::noModel), QColor::fromRgbF(1.0F, 0.85F, 0.1F));
}

TEST(StatusDotLook, HasARhythmForEachState) {
    EXPECT_EQ(StatusDotLook::pulseDuration(DotState::recording), 0.5);
    EXPECT_EQ(StatusDotLook::pulseDuration(DotState::transcribing), 0);
    EXPECT_EQ(StatusDotLook::pulseDuration(DotState::ready), 1.6);
    EXPECT_EQ(StatusDotLook::pulseDuration(DotState::noPermission), 0.7);
    EXPECT_EQ(StatusDotLook::pulseDuration(DotState::noModel), 0.28);
}

TEST(StatusDotLook, PulsesDownAndBackAgainForEver) {
    for (const double cycles : {0.0, 1.0, 1000.0}) {
        const double start = cycles * 2 * 0.5;
        EXPECT_NEAR(StatusDotLook::pulseOpacity(DotState::recording, start), 1, 1e-6);
        EXPECT_NEAR(StatusDotLook::pulseOpacity(DotState::recording, start + 0.25), 0.6, 1e-3);
        EXPECT_NEAR(StatusDotLook::pulseOpacity(DotState::recording, start + 0.5), 0.2, 1e-6);
        EXPECT_NEAR(StatusDotLook::pulseOpacity(DotState::recording, start + 0.75), 0.6, 1e-3);
    }
}

TEST(StatusDotLook, StartsAndEndsEachWaySlowly) {
    EXPECT_GT(StatusDotLook::pulseOpacity(DotState::noPermission, 0.07), 1 - 0.8 * 0.05);
    EXPECT_LT(StatusDotLook::pulseOpacity(DotState::noPermission, 0.63), 0.2 + 0.8 * 0.05);
}

TEST(StatusDotLook, FadesLessWhenReady) {
    EXPECT_NEAR(StatusDotLook::pulseOpacity(DotState::ready, 1.6), 0.65, 1e-6);
    EXPECT_NEAR(StatusDotLook::pulseOpacity(DotState::noModel, 0.28), 0.2, 1e-6);
}

TEST(StatusDotLook, StaysSteadyWhileTranscribing) {
    EXPECT_EQ(StatusDotLook::pulseOpacity(DotState::transcribing, 0.4), 1);
}
