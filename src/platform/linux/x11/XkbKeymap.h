#pragma once

#include "platform/linux/x11/XcbConnection.h"

#include <memory>
#include <optional>
#include <span>

#include <xkbcommon/xkbcommon.h>

namespace quorvin {

/// The keyboard layout of an X display as it was when this was read: which key gives which symbol.
class XkbKeymap {
public:
    /// Waits for the X server a few times. Absent when the connection is broken.
    [[nodiscard]] static std::optional<XkbKeymap> read(XcbConnection& connection);

    /// The key that gives `symbol` while the keys of `heldModifiers` are down: in the group that is
    /// selected or else in another one, and the lowest number when there are several.
    [[nodiscard]] std::optional<xcb_keycode_t>
    keycode(xkb_keysym_t symbol, std::span<const xcb_keycode_t> heldModifiers) const;

private:
    [[nodiscard]] std::optional<xcb_keycode_t>
    keycodeInGroup(xkb_layout_index_t group, xkb_keysym_t symbol,
                   std::span<const xcb_keycode_t> heldModifiers) const;

    struct Unref {
        void operator()(xkb_context* context) const { xkb_context_unref(context); }
        void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
        void operator()(xkb_state* state) const { xkb_state_unref(state); }
    };
    template <typename T>
    using Ref = std::unique_ptr<T, Unref>;

    XkbKeymap(Ref<xkb_keymap> keymap, xkb_layout_index_t group)
        : m_keymap(std::move(keymap)), m_group(group) {}

    Ref<xkb_keymap> m_keymap;
    xkb_layout_index_t m_group;
};

} // namespace quorvin
