#include "theme/HexColor.h"

#include <algorithm>
#include <cstdint>

namespace quorvin {

namespace {

QStringView trimmedToAlphanumeric(QStringView text) {
    const auto isAlphanumeric = [](QChar character) { return character.isLetterOrNumber(); };
    const auto begin = std::find_if(text.begin(), text.end(), isAlphanumeric);
    const auto end =
        std::find_if(text.rbegin(), std::make_reverse_iterator(begin), isAlphanumeric).base();
    return {begin, end};
}

int digitValue(QChar character) {
    const char16_t code = character.unicode();
    if (code >= u'0' && code <= u'9') {
        return code - u'0';
    }
    const auto lower = static_cast<char16_t>(code | 0x20U);
    return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

/// 0 without a digit at the beginning.
std::uint64_t leadingNumber(QStringView text) {
    std::uint64_t value = 0;
    for (const QChar character : text) {
        const int digit = digitValue(character);
        if (digit < 0) {
            break;
        }
        value = value << 4U | static_cast<std::uint64_t>(digit);
    }
    return value;
}

} // namespace

QColor hexColor(QStringView text) {
    const QStringView digits = trimmedToAlphanumeric(text);
    const std::uint64_t value = leadingNumber(digits);
    const auto byte = [value](unsigned shift) { return static_cast<int>(value >> shift & 0xFFU); };
    const auto nibble = [value](unsigned shift) {
        return static_cast<int>(value >> shift & 0xFU) * 17;
    };
    switch (digits.size()) {
    case 8:
        return {byte(16), byte(8), byte(0), byte(24)};
    case 6:
        return {byte(16), byte(8), byte(0)};
    case 3:
        return {nibble(8), nibble(4), nibble(0)};
    default:
        return {0, 0, 0};
    }
}

} // namespace quorvin
