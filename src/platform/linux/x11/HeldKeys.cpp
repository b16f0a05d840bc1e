#include "platform/linux/x11/HeldKeys.h"

#include <span>
#include <string_view>

#include <xcb/xinput.h>

namespace quorvin {

namespace {

constexpr std::string_view programsKeyboard = "XTEST keyboard"; // how the X server ends its name

HeldKeys::Set keysIn(std::span<const std::uint8_t, 32> bytes) {
    HeldKeys::Set keys;
    for (std::size_t key = 0; key < keys.size(); ++key) {
        keys[key] = ((bytes[key / 8] >> (key % 8)) & 1) != 0;
    }
    return keys;
}

bool isRealKeyboard(const xcb_input_xi_device_info_t* device) {
    const std::string_view name(
        xcb_input_xi_device_info_name(device),
        static_cast<std::size_t>(xcb_input_xi_device_info_name_length(device)));
    return device->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD &&
           !name.ends_with(programsKeyboard);
}

HeldKeys::Set keysOf(xcb_connection_t* connection, xcb_input_query_device_state_cookie_t cookie) {
    HeldKeys::Set keys;
    const XcbReply<xcb_input_query_device_state_reply_t> reply(
        xcb_input_query_device_state_reply(connection, cookie, nullptr));
    if (!reply) {
        return keys;
    }
    for (auto classes = xcb_input_query_device_state_classes_iterator(reply.get()); classes.rem > 0;
         xcb_input_input_state_next(&classes)) {
        if (classes.data->class_id == XCB_INPUT_INPUT_CLASS_KEY) {
            const auto& state = reinterpret_cast<const xcb_input_key_state_t&>(*classes.data);
            keys |= keysIn(state.keys);
        }
    }
    return keys;
}

} // namespace

std::vector<xcb_keycode_t> HeldKeys::modifiers() {
    xcb_connection_t* const handle = m_connection.handle();
    const auto downCookie = xcb_query_keymap_unchecked(handle);
    const auto mappingCookie = xcb_get_modifier_mapping_unchecked(handle);
    const XcbReply<xcb_query_keymap_reply_t> down(
        xcb_query_keymap_reply(handle, downCookie, nullptr));
    const XcbReply<xcb_get_modifier_mapping_reply_t> mapping(
        xcb_get_modifier_mapping_reply(handle, mappingCookie, nullptr));
    if (!down || !mapping) {
        return {};
    }
    Set keys = keysIn(down->keys);
    std::vector<xcb_keycode_t> held;
    const xcb_keycode_t* const mapped = xcb_get_modifier_mapping_keycodes(mapping.get());
    const int keysEach = mapping->keycodes_per_modifier;
    for (int i = 0; i < xcb_get_modifier_mapping_keycodes_length(mapping.get()); ++i) {
        const xcb_keycode_t key = mapped[i];
        // A lock has its effect when it is pressed, not by being held.
        if (keys[key] && i / keysEach != XCB_MAP_INDEX_LOCK) {
            held.push_back(key);
            keys.reset(key); // a key may stand for several modifiers
        }
    }
    return held;
}

HeldKeys::Set HeldKeys::physical() {
    xcb_connection_t* const handle = m_connection.handle();
    Set keys;
    const XcbReply<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
        handle, xcb_input_xi_query_device_unchecked(handle, XCB_INPUT_DEVICE_ALL), nullptr));
    if (!devices) {
        return keys;
    }
    std::vector<xcb_input_query_device_state_cookie_t> cookies;
    for (auto device = xcb_input_xi_query_device_infos_iterator(devices.get()); device.rem > 0;
         xcb_input_xi_device_info_next(&device)) {
        if (isRealKeyboard(device.data)) {
            cookies.push_back(xcb_input_query_device_state_unchecked(
                handle, static_cast<std::uint8_t>(device.data->deviceid)));
        }
    }
    for (const auto cookie : cookies) {
        keys |= keysOf(handle, cookie);
    }
    return keys;
}

} // namespace quorvin
