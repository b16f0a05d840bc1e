#include "models/ActivityEntry.h"

#include <tuple>
#include <vector>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

TEST(ActivityEntry, EveryTypeHasItsNameSymbolAndColour) {
    using Row = std::tuple<ActivityType, QString, QString, QString>;
    const std::vector<Row> rows = {
        {ActivityType::recording, u"recording"_s, u"waveform.circle"_s, u"ef4444"_s},
        {ActivityType::transcribing, u"transcribing"_s, u"text.bubble"_s, u"f59e0b"_s},
        {ActivityType::sending, u"sending"_s, u"paperplane.fill"_s, u"22c55e"_s},
        {ActivityType::success, u"success"_s, u"checkmark.circle.fill"_s, u"22c55e"_s},
        {ActivityType::error, u"error"_s, u"xmark.octagon.fill"_s, u"ef4444"_s},
        {ActivityType::model, u"model"_s, u"cpu"_s, u"8b5cf6"_s},
        {ActivityType::settings, u"settings"_s, u"slider.horizontal.3"_s, u"9ca3af"_s},
        {ActivityType::attach, u"attach"_s, u"paperclip"_s, u"ec4899"_s},
        {ActivityType::session, u"session"_s, u"terminal"_s, u"06b6d4"_s},
        {ActivityType::info, u"info"_s, u"info.circle"_s, u"6b7280"_s},
    };
    for (const auto& [type, name, symbol, color] : rows) {
        EXPECT_EQ(rawValue(type), name);
        EXPECT_EQ(icon(type), symbol);
        EXPECT_EQ(colorHex(type), color);
    }
}

TEST(ActivityEntry, EveryEntryHasAnIdentityOfItsOwn) {
    EXPECT_NE(ActivityEntry().id, ActivityEntry().id);
}

TEST(ActivityEntry, ShowsItsTimeOfDay) {
    ActivityEntry entry;
    entry.timestamp = QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5));
    EXPECT_EQ(entry.time(), u"03:04:05"_s);
}
