#include "models/ActivityEntry.h"

#include <array>

namespace quorvin {

namespace {

struct Look {
    const char16_t* rawValue;
    const char16_t* icon;
    const char16_t* colorHex;
};

// In the order of ActivityType.
constexpr std::array<Look, 10> looks = {{
    {u"recording", u"waveform.circle", u"ef4444"},
    {u"transcribing", u"text.bubble", u"f59e0b"},
    {u"sending", u"paperplane.fill", u"22c55e"},
    {u"success", u"checkmark.circle.fill", u"22c55e"},
    {u"error", u"xmark.octagon.fill", u"ef4444"},
    {u"model", u"cpu", u"8b5cf6"},
    {u"settings", u"slider.horizontal.3", u"9ca3af"},
    {u"attach", u"paperclip", u"ec4899"},
    {u"session", u"terminal", u"06b6d4"},
    {u"info", u"info.circle", u"6b7280"},
}};

const Look& look(ActivityType type) {
    return looks.at(static_cast<std::size_t>(type));
}

} // namespace

QString rawValue(ActivityType type) {
    return QString::fromUtf16(look(type).rawValue);
}

QString icon(ActivityType type) {
    return QString::fromUtf16(look(type).icon);
}

QString colorHex(ActivityType type) {
    return QString::fromUtf16(look(type).colorHex);
}

QString ActivityEntry::time() const {
    return timestamp.toLocalTime().toString(QStringLiteral("HH:mm:ss"));
}

} // namespace quorvin
