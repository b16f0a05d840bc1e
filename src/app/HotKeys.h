#pragma once

#include "platform/KeyMonitor.h"

#include <optional>

namespace quorvin {

enum class HotKeyAction { toggleCompactMode, compactSend, stopRecording, cancelRecording };

/// Which monitor saw a key.
enum class KeyOrigin { otherProgram, thisProgram };

/// What a key means at present, if anything.
[[nodiscard]] std::optional<HotKeyAction> hotKeyAction(const KeyDown& key, KeyOrigin origin,
                                                       bool isCompactMode, bool isRecording);

} // namespace quorvin
