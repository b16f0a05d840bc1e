#include "unit/platform/linux/pulse/PulseServerFixture.h"

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using ::testing::Optional;

TEST_F(PulseServerTest, ListsMicrophonesByDescriptionAndLeavesMonitorsOut) {
    server.start({sinkModule(u"room"_s, 48000, 2), sinkModule(u"phone"_s, 16000, 1),
                  microphoneModule(u"mic_b"_s, u"room"_s, u"Desk Microphone"_s),
                  microphoneModule(u"mic_a"_s, u"phone"_s, u"Headset"_s)});
    const auto devices = host().devices();
    ASSERT_EQ(devices.size(), 2U);
    EXPECT_THAT(devices[0].name, Optional(std::string("Desk Microphone")));
    EXPECT_EQ(devices[0].inputChannelCount, 2U);
    EXPECT_THAT(devices[1].name, Optional(std::string("Headset")));
    EXPECT_EQ(devices[1].inputChannelCount, 1U);
    EXPECT_EQ(host().authorizationStatus(), MicrophoneAuthorization::authorized);
}

TEST_F(PulseServerTest, ListsAMonitorWhereThereIsNothingElse) {
    server.start({sinkModule(u"room"_s, 48000, 2)});
    const auto devices = host().devices();
    ASSERT_EQ(devices.size(), 1U);
    EXPECT_THAT(devices[0].name, Optional(std::string("Monitor of Null Output")));
}

TEST_F(PulseServerTest, TheListFollowsTheServer) {
    startServer();
    ASSERT_EQ(host().devices().size(), 1U);
    server.command(u"load-module "_s +
                   microphoneModule(u"second"_s, u"room"_s, u"Another Microphone"_s));
    EXPECT_TRUE(eventually([&] { return host().devices().size() == 2; }));
    server.command(u"unload-module module-remap-source"_s);
    // Without a microphone the sink's monitor is left.
    EXPECT_TRUE(eventually([&] { return numberOf("Desk Microphone") == 0; }));
    EXPECT_EQ(host().devices().size(), 1U);
}

TEST_F(PulseServerTest, ANumberNamesTheSameDeviceAfterARestart) {
    startServer();
    const std::uint32_t number = numberOf("Desk Microphone");
    ASSERT_NE(number, 0U);
    server.kill();
    server.start({sinkModule(u"first"_s, 16000, 1),
                  microphoneModule(u"other"_s, u"first"_s, u"Another Microphone"_s),
                  sinkModule(u"room"_s, 48000, 2),
                  microphoneModule(u"mic"_s, u"room"_s, u"Desk Microphone"_s)});
    EXPECT_TRUE(eventually(
        [&] { return host().authorizationStatus() == MicrophoneAuthorization::authorized; }));
    EXPECT_EQ(numberOf("Desk Microphone"), number);
    EXPECT_EQ(host().devices().size(), 2U);
}

TEST_F(PulseServerTest, AnUnknownDeviceIsAnErrorAndLeavesTheDefault) {
    startServer();
    const auto engine = host().makeCaptureEngine();
    EXPECT_THROW(engine->setDevice(numberOf("Desk Microphone") + 1), AudioHostError);
    EXPECT_EQ(engine->inputFormat(), (AudioFormat{.sampleRate = 48000, .channelCount = 2}));
    engine->start();
    EXPECT_TRUE(engine->isRunning());
}

TEST_F(PulseServerTest, AMonitorAsTheDefaultGivesWayToAMicrophone) {
    server.start({sinkModule(u"room"_s, 48000, 2), sinkModule(u"phone"_s, 16000, 1),
                  microphoneModule(u"headset"_s, u"phone"_s, u"Headset"_s)});
    server.command(u"set-default-source room.monitor"_s);
    const auto engine = host().makeCaptureEngine();
    EXPECT_EQ(engine->inputFormat(), (AudioFormat{.sampleRate = 16000, .channelCount = 1}));
}
