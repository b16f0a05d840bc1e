#pragma once

#include "platform/linux/x11/XcbReply.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

namespace quorvin {

/// A window's property, asked for when this is made and waited for when it is read, once, by one of
/// the readers. So many can be under way for one trip to the X server.
class XcbProperty {
public:
    XcbProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property);

    /// Empty when there is no such property of 32-bit values.
    [[nodiscard]] std::vector<std::uint32_t> numbers();
    [[nodiscard]] std::optional<std::uint32_t> number();
    [[nodiscard]] QByteArray bytes();
    /// Latin-1 for the type STRING, UTF-8 for every other one.
    [[nodiscard]] QString text();

private:
    [[nodiscard]] XcbReply<xcb_get_property_reply_t> reply();

    xcb_connection_t* m_connection;
    xcb_get_property_cookie_t m_cookie;
};

} // namespace quorvin
