#include "platform/linux/x11/PropertyReply.h"

#include <cstring>

namespace quorvin::propertyReply {

std::vector<std::uint32_t> numbers(const xcb_get_property_reply_t* reply) {
    if (reply == nullptr || reply->format != 32) {
        return {};
    }
    std::vector<std::uint32_t> values(reply->value_len);
    if (!values.empty()) {
        std::memcpy(values.data(), xcb_get_property_value(reply),
                    values.size() * sizeof(values[0]));
    }
    return values;
}

QByteArray bytes(const xcb_get_property_reply_t* reply) {
    if (reply == nullptr || reply->format != 8) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply)),
            xcb_get_property_value_length(reply)};
}

QString text(const xcb_get_property_reply_t* reply) {
    const QByteArray content = bytes(reply);
    return reply != nullptr && reply->type == XCB_ATOM_STRING ? QString::fromLatin1(content)
                                                              : QString::fromUtf8(content);
}

} // namespace quorvin::propertyReply
