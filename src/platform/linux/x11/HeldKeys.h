#pragma once

#include "platform/linux/x11/XcbConnection.h"

#include <bitset>
#include <vector>

namespace quorvin {

/// Which keys of an X display are down at this moment; each question waits for the X server. A
/// connection that is broken has none.
class HeldKeys {
public:
    using Set = std::bitset<256>; // by key code

    explicit HeldKeys(XcbConnection& connection) : m_connection(connection) {}

    /// The modifier keys that programs see as down, Caps Lock left out.
    [[nodiscard]] std::vector<xcb_keycode_t> modifiers();
    /// The keys that a keyboard, and not some program, holds down.
    [[nodiscard]] Set physical();

private:
    XcbConnection& m_connection;
};

} // namespace quorvin
