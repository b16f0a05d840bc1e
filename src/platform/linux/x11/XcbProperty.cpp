#include "platform/linux/x11/XcbProperty.h"

#include "platform/linux/x11/PropertyReply.h"

namespace quorvin {

namespace {

// In units of four bytes, and more than any property read here holds: a foreign program must not
// make this one fetch megabytes.
constexpr std::uint32_t longestProperty = 65'536;

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
    return propertyReply::numbers(reply().get());
}

std::optional<std::uint32_t> XcbProperty::number() {
    const auto values = numbers();
    return values.empty() ? std::nullopt : std::optional(values[0]);
}

QByteArray XcbProperty::bytes() {
    return propertyReply::bytes(reply().get());
}

QString XcbProperty::text() {
    return propertyReply::text(reply().get());
}

} // namespace quorvin
