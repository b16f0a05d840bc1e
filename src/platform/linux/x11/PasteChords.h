#pragma once

#include <QString>

#include <array>
#include <cstddef>
#include <span>

#include <xkbcommon/xkbcommon.h>

namespace quorvin {

/// Keys that are pressed together: the modifiers in their order, and then the key that gives the
/// symbol `key` while they are down.
struct KeyChord {
    std::array<xkb_keysym_t, 2> modifierKeys{};
    std::size_t modifierCount = 0;
    xkb_keysym_t key = XKB_KEY_NoSymbol;

    [[nodiscard]] std::span<const xkb_keysym_t> modifiers() const {
        return std::span(modifierKeys).first(modifierCount);
    }
    bool operator==(const KeyChord&) const = default;
};

/// What makes a program paste, by the class of its window; case doesn't matter.
[[nodiscard]] KeyChord pasteChord(const QString& windowClass);

} // namespace quorvin
