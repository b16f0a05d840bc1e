#include "platform/linux/x11/XkbKeymap.h"

#include <xkbcommon/xkbcommon-x11.h>

namespace quorvin {

std::optional<XkbKeymap> XkbKeymap::read(XcbConnection& connection) {
    if (xkb_x11_setup_xkb_extension(
            connection.handle(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
            XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr) == 0) {
        return std::nullopt;
    }
    const std::int32_t keyboard = xkb_x11_get_core_keyboard_device_id(connection.handle());
    const Ref<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
    if (keyboard == -1 || !context) {
        return std::nullopt;
    }
    Ref<xkb_keymap> keymap(xkb_x11_keymap_new_from_device(context.get(), connection.handle(),
                                                          keyboard, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap) {
        return std::nullopt;
    }
    const Ref<xkb_state> state(
        xkb_x11_state_new_from_device(keymap.get(), connection.handle(), keyboard));
    if (!state) {
        return std::nullopt;
    }
    const auto group = xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE);
    return XkbKeymap(std::move(keymap), group);
}

std::optional<xcb_keycode_t>
XkbKeymap::keycode(xkb_keysym_t symbol, std::span<const xcb_keycode_t> heldModifiers) const {
    std::optional<xcb_keycode_t> key = keycodeInGroup(m_group, symbol, heldModifiers);
    for (xkb_layout_index_t group = 0; !key && group < xkb_keymap_num_layouts(m_keymap.get());
         ++group) {
        key = keycodeInGroup(group, symbol, heldModifiers);
    }
    return key;
}

std::optional<xcb_keycode_t>
XkbKeymap::keycodeInGroup(xkb_layout_index_t group, xkb_keysym_t symbol,
                          std::span<const xcb_keycode_t> heldModifiers) const {
    const Ref<xkb_state> state(xkb_state_new(m_keymap.get()));
    if (!state) {
        return std::nullopt;
    }
    xkb_state_update_mask(state.get(), 0, 0, 0, 0, 0, group);
    for (const xcb_keycode_t modifier : heldModifiers) {
        xkb_state_update_key(state.get(), modifier, XKB_KEY_DOWN);
    }
    const xkb_keycode_t last = xkb_keymap_max_keycode(m_keymap.get());
    for (xkb_keycode_t key = xkb_keymap_min_keycode(m_keymap.get()); key <= last; ++key) {
        if (xkb_state_key_get_one_sym(state.get(), key) == symbol) {
            return static_cast<xcb_keycode_t>(key);
        }
    }
    return std::nullopt;
}

} // namespace quorvin
