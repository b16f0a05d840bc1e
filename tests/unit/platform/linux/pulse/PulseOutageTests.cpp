#include "unit/platform/linux/pulse/PulseServerFixture.h"

#include <QDeadlineTimer>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

TEST_F(PulseServerTest, AKilledServerInterruptsAndItsSuccessorIsUsed) {
    startServer();
    Recording before;
    bool interrupted = false;
    auto engine = host().makeCaptureEngine();
    engine->setInterruptionHandler([&](const std::string&) {
        interrupted = true;
        engine.reset(); // a handler may throw the engine away
    });
    engine->installTap(1023, before.tap());
    engine->start();
    ASSERT_TRUE(before.waitFor(20000));
    server.kill();
    ASSERT_TRUE(eventually([&] { return interrupted; }));
    EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::denied);
    EXPECT_THROW(static_cast<void>(host().devices()), AudioHostError);

    startServer();
    EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::authorized);
    Recording after;
    const auto successor = host().makeCaptureEngine();
    successor->installTap(1023, after.tap());
    successor->start();
    EXPECT_TRUE(after.waitFor(20000));
}

TEST_F(PulseServerTest, ADestroyedEngineInterruptsNobody) {
    startServer();
    Recording recording;
    bool interrupted = false;
    auto engine = host().makeCaptureEngine();
    engine->setInterruptionHandler([&](const std::string&) { interrupted = true; });
    engine->installTap(1023, recording.tap());
    engine->start();
    ASSERT_TRUE(recording.waitFor(2046));
    server.kill();
    // This sees the loss without running the event loop: the interruption is posted, not called.
    const QDeadlineTimer deadline(patience);
    while (host().authorizationStatus() != MicrophoneAuthorization::denied) {
        ASSERT_FALSE(deadline.hasExpired());
    }
    engine.reset();
    bool passed = false;
    scheduler.post([&] { passed = true; });
    ASSERT_TRUE(eventually([&] { return passed; }));
    EXPECT_FALSE(interrupted);
}

TEST_F(PulseServerTest, ConnectsInTheBackgroundWhenTheServerComesBack) {
    startServer();
    ASSERT_EQ(host().devices().size(), 1U);
    server.kill();
    startServer();
    EXPECT_TRUE(eventually([&] {
        return server.command(u"list-clients"_s).contains(u"application.name = \"Quorvin\""_s);
    }));
}

TEST_F(PulseServerTest, WithoutAServerEverythingRefusesQuickly) {
    const auto construction = timeOf([&] { host(); });
    EXPECT_LT(construction, 500ms);
    EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::denied);
    EXPECT_THROW(static_cast<void>(host().devices()), AudioHostError);
    const auto engine = host().makeCaptureEngine();
    EXPECT_THROW(engine->setDevice(1), AudioHostError);
    EXPECT_EQ(engine->inputFormat(), AudioFormat{});
    engine->installTap(1024, [](std::span<const float>) { FAIL(); });
    EXPECT_THROW(engine->start(), AudioHostError);
    EXPECT_FALSE(engine->isRunning());
    EXPECT_EQ(requestAccess(), false);
}

TEST_F(PulseServerTest, AServerThatComesLaterIsAskedFor) {
    EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::denied);
    startServer();
    EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::notDetermined);
    EXPECT_EQ(requestAccess(), true);
    EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::authorized);
}

TEST_F(PulseServerTest, AStartOnAServerThatHangsFailsInTime) {
    startServer();
    Recording recording;
    const auto engine = host().makeCaptureEngine();
    ASSERT_GT(engine->inputFormat().sampleRate, 0);
    server.freeze();
    const auto start = timeOf([&] { EXPECT_THROW(engine->start(), AudioHostError); });
    EXPECT_GT(start, 1500ms);
    EXPECT_LT(start, 2500ms);
    EXPECT_FALSE(engine->isRunning());
    EXPECT_EQ(host().devices().size(), 1U);
    server.thaw();
    engine->installTap(1023, recording.tap());
    engine->start();
    EXPECT_TRUE(recording.waitFor(20000));
}

TEST_F(PulseServerTest, AServerThatHangsFromTheBeginningIsWaitedForOnce) {
    startServer();
    server.freeze();
    EXPECT_LT(timeOf([&] { host(); }), 1500ms);
    EXPECT_LT(timeOf([&] {
                  EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::denied);
                  EXPECT_THROW(static_cast<void>(host().devices()), AudioHostError);
              }),
              500ms);
    server.thaw();
    EXPECT_TRUE(eventually(
        [&] { return host().authorizationStatus() == MicrophoneAuthorization::notDetermined; }));
}

TEST_F(PulseServerTest, AQuestionToAServerThatHangsIsAnsweredWithNo) {
    startServer();
    server.freeze();
    host();
    const auto wait = timeOf([&] { EXPECT_EQ(requestAccess(), false); });
    EXPECT_LT(wait, 2500ms);
    server.thaw();
}
