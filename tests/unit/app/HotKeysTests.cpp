#include "app/HotKeys.h"

#include <vector>

#include <gtest/gtest.h>

using namespace quorvin;

namespace {

using ModifierFlag::command;
using ModifierFlag::control;
using ModifierFlag::option;
using ModifierFlag::shift;

struct Mode {
    bool isCompact;
    bool isRecording;
};
constexpr Mode mainWindow{false, false};
constexpr Mode mainWindowTake{false, true};
constexpr Mode panel{true, false};
constexpr Mode panelTake{true, true};

std::optional<HotKeyAction> elsewhere(std::uint16_t key, std::uint32_t flags, Mode mode) {
    return hotKeyAction({key, flags}, KeyOrigin::otherProgram, mode.isCompact, mode.isRecording);
}

std::optional<HotKeyAction> here(std::uint16_t key, std::uint32_t flags, Mode mode) {
    return hotKeyAction({key, flags}, KeyOrigin::thisProgram, mode.isCompact, mode.isRecording);
}

const std::vector<Mode> allModes{mainWindow, mainWindowTake, panel, panelTake};

} // namespace

TEST(HotKeys, ControlAndBacktickTogglesEverywhereInEveryMode) {
    for (const Mode mode : allModes) {
        EXPECT_EQ(elsewhere(KeyCode::backtick, control, mode), HotKeyAction::toggleCompactMode);
        EXPECT_EQ(here(KeyCode::backtick, control, mode), HotKeyAction::toggleCompactMode);
    }
}

TEST(HotKeys, AFurtherModifierSpoilsItInOtherProgramsAndNotInThisOne) {
    for (const std::uint32_t further : {shift, option, command}) {
        EXPECT_EQ(elsewhere(KeyCode::backtick, control | further, mainWindow), std::nullopt);
        EXPECT_EQ(here(KeyCode::backtick, control | further, mainWindow),
                  HotKeyAction::toggleCompactMode);
    }
    EXPECT_EQ(elsewhere(KeyCode::backtick, 0, mainWindow), std::nullopt);
    EXPECT_EQ(here(KeyCode::backtick, shift, mainWindow), std::nullopt);
}

TEST(HotKeys, CommandAndRightArrowSendsInCompactModeOnly) {
    for (const Mode mode : allModes) {
        EXPECT_EQ(elsewhere(KeyCode::rightArrow, command, mode),
                  mode.isCompact ? std::optional(HotKeyAction::compactSend) : std::nullopt);
        EXPECT_EQ(here(KeyCode::rightArrow, command, mode), std::nullopt);
    }
    EXPECT_EQ(elsewhere(KeyCode::rightArrow, command | shift, panel), std::nullopt);
    EXPECT_EQ(elsewhere(KeyCode::rightArrow, 0, panel), std::nullopt);
}

TEST(HotKeys, OptionAndSpaceEndsATakeInCompactModeOnly) {
    for (const Mode mode : allModes) {
        EXPECT_EQ(elsewhere(KeyCode::space, option, mode),
                  mode.isCompact && mode.isRecording ? std::optional(HotKeyAction::stopRecording)
                                                     : std::nullopt);
        EXPECT_EQ(here(KeyCode::space, option, mode), std::nullopt);
    }
    EXPECT_EQ(elsewhere(KeyCode::space, option | control, panelTake), std::nullopt);
    EXPECT_EQ(elsewhere(KeyCode::space, 0, panelTake), std::nullopt);
}

TEST(HotKeys, EscapeDropsATakeInCompactModeWhateverIsHeld) {
    for (const std::uint32_t flags : {0U, shift, control, option, command, control | option}) {
        for (const Mode mode : allModes) {
            EXPECT_EQ(elsewhere(KeyCode::escape, flags, mode),
                      mode.isCompact && mode.isRecording
                          ? std::optional(HotKeyAction::cancelRecording)
                          : std::nullopt);
            EXPECT_EQ(here(KeyCode::escape, flags, mode), std::nullopt);
        }
    }
}

TEST(HotKeys, OtherKeysMeanNothing) {
    for (std::uint16_t key = 0; key < 128; ++key) {
        if (key == KeyCode::space || key == KeyCode::backtick || key == KeyCode::escape ||
            key == KeyCode::rightArrow) {
            continue;
        }
        for (const std::uint32_t flags : {0U, control, option, command}) {
            EXPECT_EQ(elsewhere(key, flags, panelTake), std::nullopt);
            EXPECT_EQ(here(key, flags, panelTake), std::nullopt);
        }
    }
}
