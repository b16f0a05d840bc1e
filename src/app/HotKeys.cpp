#include "app/HotKeys.h"

#include <algorithm>
#include <array>

namespace quorvin {

namespace {

enum class FlagTest { exact, contains, any };
enum class Condition { none, compactMode, recordingInCompactMode };

struct HotKey {
    std::uint16_t keyCode;
    std::uint32_t flags;
    FlagTest test;
    KeyOrigin origin;
    Condition condition;
    HotKeyAction action;
};

// The test in the program's own windows is looser than the one in others, on purpose.
constexpr std::array<HotKey, 5> hotKeys{{
    {KeyCode::backtick, ModifierFlag::control, FlagTest::exact, KeyOrigin::otherProgram,
     Condition::none, HotKeyAction::toggleCompactMode},
    {KeyCode::backtick, ModifierFlag::control, FlagTest::contains, KeyOrigin::thisProgram,
     Condition::none, HotKeyAction::toggleCompactMode},
    {KeyCode::rightArrow, ModifierFlag::command, FlagTest::exact, KeyOrigin::otherProgram,
     Condition::compactMode, HotKeyAction::compactSend},
    {KeyCode::space, ModifierFlag::option, FlagTest::exact, KeyOrigin::otherProgram,
     Condition::recordingInCompactMode, HotKeyAction::stopRecording},
    {KeyCode::escape, 0, FlagTest::any, KeyOrigin::otherProgram, Condition::recordingInCompactMode,
     HotKeyAction::cancelRecording},
}};

bool passes(const HotKey& hotKey, std::uint32_t flags) {
    switch (hotKey.test) {
    case FlagTest::exact:
        return flags == hotKey.flags;
    case FlagTest::contains:
        return (flags & hotKey.flags) == hotKey.flags;
    case FlagTest::any:
        break;
    }
    return true;
}

bool holds(Condition condition, bool isCompactMode, bool isRecording) {
    switch (condition) {
    case Condition::compactMode:
        return isCompactMode;
    case Condition::recordingInCompactMode:
        return isCompactMode && isRecording;
    case Condition::none:
        break;
    }
    return true;
}

} // namespace

std::optional<HotKeyAction> hotKeyAction(const KeyDown& key, KeyOrigin origin, bool isCompactMode,
                                         bool isRecording) {
    const auto* const found =
        std::find_if(hotKeys.begin(), hotKeys.end(), [&](const HotKey& hotKey) {
            return hotKey.keyCode == key.keyCode && hotKey.origin == origin &&
                   passes(hotKey, key.modifierFlags) &&
                   holds(hotKey.condition, isCompactMode, isRecording);
        });
    return found == hotKeys.end() ? std::nullopt : std::optional(found->action);
}

} // namespace quorvin
