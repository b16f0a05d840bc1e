#include "platform/linux/x11/XcbProperty.h"

#include <cstring>

namespace quorvin {

namespace {

// In units of four bytes, and more than any property read here holds: a foreign program must not
// make this one fetch megabytes.
constexpr std::uint32_t longestProperty = 65'536;

QByteArray bytesOf(const xcb_get_property_reply_t* reply) {
    if (reply == nullptr || reply->format != 8) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply)),
            xcb_get_property_value_length(reply)};
}

} // namespace

XcbProperty::XcbProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property)
    : m_connection(connection)
    , m_cookie(xcb_get_property_unchecked(connection, 0, window, property, XCB_ATOM_ANY, 0,
                                          longestProperty)) {}

XcbReply<xcb_get_property_reply_t> XcbProperty::reply() {
    return XcbReply<xcb_get_property_reply_t>(
        xcb_get_property_reply(m_connection, m_cookie, nullptr));
}

std::vector<std::uint32_t> XcbProperty::numbers() {
    const auto property = reply();
    if (!property || property->format != 32) {
        return {};
    }
    std::vector<std::uint32_t> values(property->value_len);
    if (!values.empty()) {
        std::memcpy(values.data(), xcb_get_property_value(property.get()),
                    values.size() * sizeof(values[0]));
    }
    return values;
}

std::optional<std::uint32_t> XcbProperty::number() {
    const auto values = numbers();
    return values.empty() ? std::nullopt : std::optional(values[0]);
}

QByteArray XcbProperty::bytes() {
    return bytesOf(reply().get());
}

QString XcbProperty::text() {
    const auto property = reply();
    const QByteArray bytes = bytesOf(property.get());
    return property && property->type == XCB_ATOM_STRING ? QString::fromLatin1(bytes)
                                                         : QString::fromUtf8(bytes);
}

} // namespace quorvin
