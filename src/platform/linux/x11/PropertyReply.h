#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <vector>

#include <xcb/xcb.h>

/// What the X server's answer about a property holds. Any program may have set it, to anything. A
/// null answer, and one of values of another width, is empty.
namespace quorvin::propertyReply {

/// Of a property of 32-bit values.
[[nodiscard]] std::vector<std::uint32_t> numbers(const xcb_get_property_reply_t* reply);
/// Of a property of bytes.
[[nodiscard]] QByteArray bytes(const xcb_get_property_reply_t* reply);
/// The bytes as Latin-1 for the type STRING, as UTF-8 for every other one.
[[nodiscard]] QString text(const xcb_get_property_reply_t* reply);

} // namespace quorvin::propertyReply
