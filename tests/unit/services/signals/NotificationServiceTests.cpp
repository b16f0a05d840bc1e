#include "services/signals/NotificationService.h"
#include "support/LogCapture.h"
#include "support/fakes/FakeUserNotifications.h"

#include <memory>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::FakeUserNotifications;
using quorvin::testing::LogCapture;

namespace {

class NotificationServiceTest : public ::testing::Test {
protected:
    NotificationService& start() {
        service = std::make_unique<NotificationService>(system);
        return *service;
    }
    void sendSomething() {
        service->send(u"id"_s, u"Title"_s, u"Body"_s, u"device"_s, NotificationSound::standard);
    }

    FakeUserNotifications system;
    LogCapture log{"com.quorvin.Notifications"};
    std::unique_ptr<NotificationService> service;
};

} // namespace

TEST_F(NotificationServiceTest, ConstructionAsksOnce) {
    start();
    EXPECT_EQ(system.authorizationRequests, 1);
    EXPECT_TRUE(service->authorized());
}

TEST_F(NotificationServiceTest, NothingIsPostedBeforeTheUserHasAnswered) {
    system.authorization.reset();
    start();
    EXPECT_FALSE(service->authorized());
    sendSomething();
    system.answer({.granted = true, .error = {}});
    EXPECT_TRUE(service->authorized());
    EXPECT_TRUE(system.requests.empty()) << "what came too early must not be kept";
    sendSomething();
    EXPECT_EQ(system.requests.size(), 1U);
}

TEST_F(NotificationServiceTest, ARefusalIsSilent) {
    system.authorization = {.granted = false, .error = {}};
    start();
    sendSomething();
    EXPECT_FALSE(service->authorized());
    EXPECT_TRUE(system.requests.empty());
    EXPECT_TRUE(log.take().empty());
}

TEST_F(NotificationServiceTest, AnErrorOfThePermissionIsLogged) {
    system.authorization = {.granted = false, .error = u"no centre"_s};
    start();
    EXPECT_EQ(log.take(),
              (std::vector<LogCapture::Line>{{QtCriticalMsg, u"Permission error: no centre"_s}}));
}

TEST_F(NotificationServiceTest, APostIsPassedOnWhole) {
    start().send(u"error"_s, u"Send Failed"_s, u"why"_s, u"transfer.error"_s,
                 NotificationSound::critical);
    ASSERT_EQ(system.requests.size(), 1U);
    const NotificationRequest& request = system.requests.front();
    EXPECT_EQ(request.identifier, u"quorvin-error"_s);
    EXPECT_EQ(request.title, u"Send Failed"_s);
    EXPECT_EQ(request.body, u"why"_s);
    EXPECT_EQ(request.category, u"transfer.error"_s);
    EXPECT_EQ(request.sound, NotificationSound::critical);
}

TEST_F(NotificationServiceTest, TwoErrorsLeaveTheLaterOne) {
    start();
    for (const QString& title : {u"Recording Failed"_s, u"Send Failed"_s}) {
        service->send(u"error"_s, title, QString(), u"transfer.error"_s,
                      NotificationSound::critical);
    }
    ASSERT_EQ(system.shown.size(), 1U);
    EXPECT_EQ(system.shown.begin()->second.title, u"Send Failed"_s);
}

TEST_F(NotificationServiceTest, AFailedDeliveryIsLogged) {
    start();
    system.deliveryError = u"no server"_s;
    sendSomething();
    EXPECT_EQ(log.take(), (std::vector<LogCapture::Line>{
                              {QtCriticalMsg, u"Failed to deliver 'id': no server"_s}}));
}

TEST_F(NotificationServiceTest, AnswersThatComeAfterItsEndHaveNoEffect) {
    start();
    system.holdsDeliveries = true;
    system.deliveryError = u"no server"_s;
    sendSomething();
    system.authorization.reset();
    service->requestPermission();
    service.reset();
    system.finishDeliveries();
    system.answer({.granted = true, .error = u"late"_s});
    EXPECT_TRUE(log.take().empty());
}

TEST_F(NotificationServiceTest, ATextOfAHundredCharactersStaysWhole) {
    const QString text = u"ä"_s.repeated(99) + u"👩‍👩‍👧"_s;
    start().notifyTranscriptionComplete(text);
    const NotificationRequest& request = system.requests.front();
    EXPECT_EQ(request.identifier, u"quorvin-transcription-complete"_s);
    EXPECT_EQ(request.title, u"Transcription Complete"_s);
    EXPECT_EQ(request.body, text);
    EXPECT_EQ(request.category, u"transfer.complete"_s);
    EXPECT_EQ(request.sound, NotificationSound::standard);
}

TEST_F(NotificationServiceTest, ATextOfAHundredAndOneCharactersIsCut) {
    start().notifyTranscriptionComplete(u"x"_s.repeated(101));
    EXPECT_EQ(system.requests.front().body, u"x"_s.repeated(100) + u"..."_s);
    EXPECT_EQ(system.requests.front().body.size(), 103);
}

TEST_F(NotificationServiceTest, ASuccessfulSendNamesTheAgent) {
    start().notifySendSuccess(u"Claude"_s);
    const NotificationRequest& request = system.requests.front();
    EXPECT_EQ(request.identifier, u"quorvin-send-success"_s);
    EXPECT_EQ(request.title, u"Sent to Claude"_s);
    EXPECT_EQ(request.body, u"Text delivered successfully"_s);
    EXPECT_EQ(request.category, u"transfer.complete"_s);
    EXPECT_EQ(request.sound, NotificationSound::standard);
}

TEST_F(NotificationServiceTest, SharedIsTheLivingInstance) {
    EXPECT_EQ(&NotificationService::shared(), &start());
}

TEST_F(NotificationServiceTest, AnOlderInstanceMayGoLater) {
    start();
    NotificationService newer(system);
    service.reset();
    EXPECT_EQ(&NotificationService::shared(), &newer);
}
