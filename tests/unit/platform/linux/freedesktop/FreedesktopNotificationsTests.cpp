#include "platform/linux/freedesktop/FreedesktopNotifications.h"

#include <QDBusConnection>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

TEST(FreedesktopNotificationsWithoutBus, NothingIsGranted) {
    FreedesktopNotifications notifications{QDBusConnection(u"no bus"_s)};
    std::optional<UserNotifications::Authorization> answer;
    notifications.requestAuthorization([&](const auto& given) { answer = given; });
    ASSERT_TRUE(answer);
    EXPECT_FALSE(answer->granted);
    EXPECT_EQ(answer->error, std::nullopt);
}

TEST(FreedesktopNotificationsWithoutBus, AddingIsAnErrorAtOnce) {
    FreedesktopNotifications notifications{QDBusConnection(u"no bus"_s)};
    int errors = 0;
    for (int i = 0; i < 2; ++i) {
        notifications.add({.identifier = u"id"_s, .title = {}, .body = {}, .category = {}},
                          [&](const auto& error) { errors += error.has_value() ? 1 : 0; });
    }
    EXPECT_EQ(errors, 2);
}
