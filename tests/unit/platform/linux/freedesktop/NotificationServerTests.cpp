#include "platform/linux/freedesktop/FreedesktopNotifications.h"
#include "support/Eventually.h"
#include "unit/platform/linux/freedesktop/NotificationServer.h"
#include "unit/platform/linux/freedesktop/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QElapsedTimer>
#include <QFile>

#include <memory>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

class NotificationServerTest : public ::testing::Test {
protected:
    void startServer() { server = std::make_unique<NotificationServer>(bus.connect()); }
    FreedesktopNotifications& startProgram() {
        programBus = bus.connect();
        notifications = std::make_unique<FreedesktopNotifications>(programBus);
        return *notifications;
    }
    /// Returns when the program knows all that has happened on the bus until now.
    void letTheProgramHear() const {
        QDBusMessage message = QDBusMessage::createMethodCall(
            u"org.freedesktop.DBus"_s, u"/"_s, u"org.freedesktop.DBus"_s, u"GetId"_s);
        const QDBusPendingCall answer = programBus.asyncCall(message);
        ASSERT_TRUE(eventually([&] { return answer.isFinished(); }));
    }
    void add(const QString& identifier, const QString& title, const QString& body = {}) {
        notifications->add({.identifier = identifier,
                            .title = title,
                            .body = body,
                            .category = u"device"_s,
                            .sound = NotificationSound::standard},
                           [this](const std::optional<QString>& error) {
                               ++completions;
                               if (error) {
                                   errors.append(*error);
                               }
                           });
    }
    void addAndFinish(const QString& identifier, const QString& title, const QString& body = {}) {
        const int before = completions;
        add(identifier, title, body);
        ASSERT_TRUE(eventually([&] { return completions > before; }));
    }
    [[nodiscard]] QStringList summaries() const {
        QStringList result;
        for (const NotificationServer::Call& call : server->calls) {
            result.append(call.summary);
        }
        return result;
    }

    PrivateBus bus;
    QDBusConnection programBus{QString()};
    std::unique_ptr<NotificationServer> server;
    std::unique_ptr<FreedesktopNotifications> notifications;
    int completions = 0;
    QStringList errors;
};

const QString service = u"org.freedesktop.Notifications"_s;

} // namespace

TEST_F(NotificationServerTest, TheBusIsThePermission) {
    bool granted = false;
    startProgram().requestAuthorization([&](const auto& answer) { granted = answer.granted; });
    EXPECT_TRUE(granted);
}

TEST_F(NotificationServerTest, ABannerHasAllItsParts) {
    startServer();
    startProgram();
    addAndFinish(u"quorvin-id"_s, u"Title ä"_s, u"Body\n🎙️"_s);
    ASSERT_EQ(server->calls.size(), 1U);
    const NotificationServer::Call& call = server->calls.front();
    EXPECT_EQ(call.appName, u"Quorvin"_s);
    EXPECT_EQ(call.replacesId, 0U);
    EXPECT_EQ(call.appIcon, u"quorvin"_s);
    EXPECT_EQ(call.summary, u"Title ä"_s);
    EXPECT_EQ(call.body, u"Body\n🎙️"_s);
    EXPECT_TRUE(call.actions.isEmpty());
    EXPECT_EQ(call.expireTimeout, -1);
    EXPECT_EQ(call.hints.size(), 3);
    EXPECT_EQ(call.hints[u"category"_s], QVariant(u"device"_s));
    EXPECT_EQ(call.hints[u"desktop-entry"_s], QVariant(u"quorvin"_s));
    EXPECT_EQ(call.hints[u"urgency"_s], QVariant::fromValue<uchar>(1));
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(NotificationServerTest, TheCriticalSoundIsUrgent) {
    startServer();
    startProgram();
    notifications->add({.identifier = u"id"_s,
                        .title = {},
                        .body = {},
                        .category = {},
                        .sound = NotificationSound::critical},
                       [&](const auto&) { ++completions; });
    ASSERT_TRUE(eventually([&] { return completions == 1; }));
    EXPECT_EQ(server->calls.front().hints[u"urgency"_s], QVariant::fromValue<uchar>(2));
}

TEST_F(NotificationServerTest, MarkupIsEscapedForAServerThatKnowsIt) {
    const QString body = u"if (a < b && c > d) <b>\"x\"</b>"_s;
    startServer();
    server->capabilities = QStringList{u"body"_s, u"body-markup"_s};
    startProgram();
    addAndFinish(u"id"_s, u"<i>title</i>"_s, body);
    EXPECT_EQ(server->calls.back().body, body.toHtmlEscaped());
    EXPECT_EQ(server->calls.back().summary, u"<i>title</i>"_s) << "titles hold no markup";
}

TEST_F(NotificationServerTest, TextIsPassedAsItIsToAServerWithoutMarkup) {
    const QString body = u"if (a < b && c > d)"_s;
    startServer();
    server->capabilities = QStringList{u"body"_s};
    startProgram();
    addAndFinish(u"id"_s, u"t"_s, body);
    EXPECT_EQ(server->calls.back().body, body);
}

TEST_F(NotificationServerTest, ALaterBannerReplacesTheOneWithItsIdentifier) {
    startServer();
    startProgram();
    addAndFinish(u"error"_s, u"first"_s);
    addAndFinish(u"other"_s, u"beside"_s);
    addAndFinish(u"error"_s, u"second"_s);
    addAndFinish(u"error"_s, u"third"_s);
    ASSERT_EQ(server->calls.size(), 4U);
    EXPECT_EQ(server->calls[1].replacesId, 0U);
    EXPECT_EQ(server->calls[2].replacesId, 41U);
    EXPECT_EQ(server->calls[3].replacesId, 41U);
    EXPECT_EQ(server->capabilityCalls, 1);
}

TEST_F(NotificationServerTest, TwoAtOnceEndAsOneBanner) {
    startServer();
    startProgram();
    addAndFinish(u"warm"_s, u"up"_s);
    server->calls.clear();
    server->holdsReplies = true;
    add(u"error"_s, u"first"_s);
    add(u"error"_s, u"second"_s);
    add(u"other"_s, u"beside"_s);
    ASSERT_TRUE(eventually([&] { return server->calls.size() >= 2; }));
    EXPECT_EQ(summaries(), (QStringList{u"first"_s, u"beside"_s})) << "the second must wait";
    server->releaseReplies();
    ASSERT_TRUE(eventually([&] { return completions == 4; }));
    EXPECT_EQ(summaries(), (QStringList{u"first"_s, u"beside"_s, u"second"_s}));
    EXPECT_EQ(server->calls[2].replacesId, 42U);
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(NotificationServerTest, OfManyThatWaitOnlyTheLastIsSent) {
    startServer();
    startProgram();
    for (int i = 1; i <= 5; ++i) { // none is sent before the server's abilities are known
        add(u"error"_s, QString::number(i));
    }
    add(u"other"_s, u"beside"_s);
    ASSERT_TRUE(eventually([&] { return completions == 6; }));
    EXPECT_EQ(summaries(), (QStringList{u"5"_s, u"beside"_s}));
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(NotificationServerTest, AnotherServerKnowsNothingOfOldBanners) {
    startServer();
    server->capabilities = QStringList{u"body-markup"_s};
    startProgram();
    addAndFinish(u"error"_s, u"first"_s);
    server.reset();
    startServer();
    letTheProgramHear();
    addAndFinish(u"error"_s, u"second"_s, u"a < b"_s);
    ASSERT_EQ(server->calls.size(), 1U);
    EXPECT_EQ(server->calls.front().replacesId, 0U);
    EXPECT_EQ(server->calls.front().body, u"a < b"_s);
    EXPECT_EQ(server->capabilityCalls, 1);
}

TEST_F(NotificationServerTest, AnErrorOfTheServerIsReportedAndTheNextOneGoesOut) {
    startServer();
    server->error = u"too many banners"_s;
    startProgram();
    addAndFinish(u"error"_s, u"first"_s);
    EXPECT_EQ(errors, QStringList{u"too many banners"_s});
    server->error.clear();
    addAndFinish(u"error"_s, u"second"_s);
    EXPECT_EQ(errors.size(), 1);
    EXPECT_EQ(summaries(), (QStringList{u"first"_s, u"second"_s}));
}

TEST_F(NotificationServerTest, AServerThatDoesNotAnswerHoldsUpNobody) {
    startServer();
    server->holdsReplies = true;
    startProgram();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 1000; ++i) {
        add(u"id-%1"_s.arg(i % 10), QString::number(i));
    }
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_EQ(completions, 990) << "ten are left, the last of each identifier";
    ASSERT_TRUE(eventually([&] { return server->capabilityCalls == 1; }));
    server->releaseReplies();
    ASSERT_TRUE(eventually([&] { return completions == 1000; }));
    EXPECT_EQ(server->calls.size(), 10U);
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(NotificationServerTest, WithoutAServerEveryBannerIsAnError) {
    startProgram();
    for (int i = 1; i <= 3; ++i) {
        addAndFinish(u"error"_s, u"t"_s);
        EXPECT_EQ(errors.size(), i);
    }
    startServer();
    addAndFinish(u"error"_s, u"t"_s);
    EXPECT_EQ(errors.size(), 3);
    EXPECT_EQ(server->calls.size(), 1U);
}

TEST_F(NotificationServerTest, AServerThatCannotStartIsStartedOnce) {
    bus.addActivatableService(service,
                              u"echo started >> %1\nexit 1\n"_s.arg(bus.filePath(u"starts"_s)));
    startProgram();
    for (int i = 0; i < 3; ++i) {
        addAndFinish(u"error"_s, u"t"_s);
    }
    EXPECT_EQ(errors.size(), 3);
    QFile starts(bus.filePath(u"starts"_s));
    ASSERT_TRUE(starts.open(QIODevice::ReadOnly));
    EXPECT_EQ(starts.readAll(), "started\n");

    startServer();
    addAndFinish(u"error"_s, u"t"_s);
    EXPECT_EQ(errors.size(), 3);
    EXPECT_EQ(server->calls.size(), 1U);
}

TEST_F(NotificationServerTest, AServerIsStartedForTheFirstBanner) {
    bus.addActivatableService(service,
                              u"touch %1\nexec sleep 30\n"_s.arg(bus.filePath(u"started"_s)));
    startProgram();
    add(u"id"_s, u"t"_s);
    ASSERT_TRUE(eventually([&] { return QFile::exists(bus.filePath(u"started"_s)); }));
    startServer(); // to the bus, what it has started has now taken the name
    ASSERT_TRUE(eventually([&] { return completions == 1; }));
    EXPECT_TRUE(errors.isEmpty());
    EXPECT_EQ(server->calls.size(), 1U);
}

TEST_F(NotificationServerTest, TheEndOfTheBusIsAnErrorOfWhatIsUnderWay) {
    startServer();
    startProgram();
    addAndFinish(u"warm"_s, u"up"_s);
    server->holdsReplies = true;
    add(u"error"_s, u"first"_s);
    add(u"error"_s, u"second"_s);
    ASSERT_TRUE(eventually([&] { return server->calls.size() == 2; }));
    bus.kill();
    ASSERT_TRUE(eventually([&] { return completions == 3; }));
    EXPECT_EQ(errors.size(), 2);
    addAndFinish(u"error"_s, u"third"_s);
    EXPECT_EQ(errors.size(), 3);
}

TEST_F(NotificationServerTest, NobodyIsCalledAfterTheEnd) {
    startServer();
    startProgram();
    server->holdsReplies = true;
    add(u"error"_s, u"first"_s);
    ASSERT_TRUE(eventually([&] { return server->capabilityCalls == 1; }));
    notifications.reset();
    server->releaseReplies();
    startProgram(); // whose reply comes after the one that nobody waits for
    addAndFinish(u"error"_s, u"second"_s);
    EXPECT_EQ(completions, 1);
    EXPECT_EQ(summaries(), QStringList{u"second"_s});
}
