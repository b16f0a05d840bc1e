#pragma once

#include "platform/Workspace.h"
#include "support/Task.h"

#include <cstdint>

namespace quorvin {

/// What is held down together with a key.
enum class KeyModifiers : std::uint32_t { none = 0, command = 0x100000 };

/// The keys that are posted, by their position on the keyboard.
enum class VirtualKey : std::uint16_t { v = 9, returnKey = 36 };

/// One half of a key press.
struct KeyEvent {
    enum class Direction { down, up };

    VirtualKey key = VirtualKey::returnKey;
    Direction direction = Direction::down;
    KeyModifiers modifiers = KeyModifiers::none;
};

/// Synthetic keys. Main thread only.
///
/// Command+V stands for whatever makes the receiving program paste on the system at hand.
class KeyEvents {
public:
    enum class Result { posted, notPossibleHere };

    KeyEvents() = default;
    KeyEvents(const KeyEvents&) = delete;
    KeyEvents& operator=(const KeyEvents&) = delete;
    /// Lets go of every key that it still holds down. Posts that wait end without effect.
    virtual ~KeyEvents() = default;

    /// Whether keys can be posted at present. Never asks the user for anything.
    [[nodiscard]] virtual bool isTrusted() = 0;
    /// The same, but asks the user first on a system where the user decides.
    [[nodiscard]] virtual bool requestTrust() { return isTrusted(); }

    /// Posts to the session: the event reaches whichever application has the keyboard focus. A key
    /// that the user holds down at that moment must not change its meaning, so a key-down may have
    /// to wait; the task ends when the event is posted. What the application makes of it is not
    /// known.
    [[nodiscard]] virtual Task<Result> post(KeyEvent event) = 0;

    /// Posts to one application, wherever the keyboard focus is.
    [[nodiscard]] virtual Task<Result> post(KeyEvent event, ProcessID process) = 0;
};

} // namespace quorvin
