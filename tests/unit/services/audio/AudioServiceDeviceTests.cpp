#include "AudioServiceFixture.h"

#include <unordered_set>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;
using ::testing::ElementsAre;

namespace {

class AudioServiceDevices : public AudioServiceFixture {
protected:
    AudioServiceDevices() {
        host.deviceList = {{7, "Desk microphone", 1}, {42, "Headset", 2}};
        static_cast<void>(log.take());
    }

    /// The device that a recording started now is bound to.
    std::optional<std::uint32_t> recordedDevice() {
        service->startRecording();
        const auto number = engine().deviceNumber;
        static_cast<void>(service->stopRecording());
        static_cast<void>(log.take());
        return number;
    }
};

} // namespace

TEST_F(AudioServiceDevices, TheDefaultRowComesFirst) {
    EXPECT_EQ(service->listInputDevices(),
              (QList<AudioInputDevice>{{u"default"_s, u"System Default"_s, 0},
                                       {u"7"_s, u"Desk microphone"_s, 7},
                                       {u"42"_s, u"Headset"_s, 42}}));
    EXPECT_THAT(log.take(), ElementsAre(info(u"Found 2 input devices"_s)));
}

TEST_F(AudioServiceDevices, ADeviceWithOnlyOutputChannelsIsAbsent) {
    host.deviceList = {{3, "Speakers", 0}, {4294967295, "Microphone", 1}};
    EXPECT_EQ(service->listInputDevices(),
              (QList<AudioInputDevice>{{u"default"_s, u"System Default"_s, 0},
                                       {u"4294967295"_s, u"Microphone"_s, 4294967295}}));
    EXPECT_THAT(log.take(), ElementsAre(info(u"Found 1 input devices"_s)));
}

TEST_F(AudioServiceDevices, ADeviceWithoutANameIsUnknown) {
    host.deviceList = {{9, std::nullopt, 1}, {10, "", 1}, {11, "Größe 🎙", 1}};
    const auto rows = service->listInputDevices();
    EXPECT_EQ(rows.at(1).name, u"Unknown Device (9)"_s);
    EXPECT_EQ(rows.at(2).name, u""_s);
    EXPECT_EQ(rows.at(3).name, u"Größe 🎙"_s);
}

TEST_F(AudioServiceDevices, TheDefaultRowIsThereWhenTheSystemCannotBeAsked) {
    host.devicesFailure = -50;
    EXPECT_EQ(service->listInputDevices(),
              (QList<AudioInputDevice>{{u"default"_s, u"System Default"_s, 0}}));
    EXPECT_THAT(log.take(), ElementsAre(error(u"Failed to get audio device list: -50"_s)));
}

TEST_F(AudioServiceDevices, DevicesAreComparedAndHashedByAllFields) {
    const AudioInputDevice device{u"7"_s, u"A"_s, 7};
    const AudioInputDevice same{u"7"_s, u"A"_s, 7};
    EXPECT_EQ(device, same);
    EXPECT_EQ(qHash(device), qHash(same));
    for (const AudioInputDevice& other :
         {AudioInputDevice{u"8"_s, u"A"_s, 7}, AudioInputDevice{u"7"_s, u"B"_s, 7},
          AudioInputDevice{u"7"_s, u"A"_s, 8}}) {
        EXPECT_NE(device, other);
        EXPECT_NE(qHash(device), qHash(other));
    }
}

TEST_F(AudioServiceDevices, TheDefaultIsCapturedUntilADeviceIsSelected) {
    EXPECT_EQ(recordedDevice(), std::nullopt);
    service->selectDevice(u"42"_s);
    EXPECT_THAT(log.take(), ElementsAre(info(u"Selected audio device: 42"_s)));
    EXPECT_EQ(recordedDevice(), 42U);
    service->selectDevice(u"default"_s);
    EXPECT_THAT(log.take(), ElementsAre(info(u"Selected system default audio device"_s)));
    EXPECT_EQ(recordedDevice(), std::nullopt);
}

TEST_F(AudioServiceDevices, WhatIsNoDeviceNumberClearsTheSelection) {
    for (const QString& id : {u"abc"_s, u""_s, u"4294967296"_s, u"+"_s, u"-7"_s, u" 7"_s, u"7 "_s,
                              u"++7"_s, u"7.0"_s, u"0x7"_s, u"Default"_s, u"٧"_s}) {
        SCOPED_TRACE(id.toStdString());
        service->selectDevice(u"7"_s);
        ASSERT_EQ(recordedDevice(), 7U);
        service->selectDevice(id);
        EXPECT_THAT(log.take(), ElementsAre(error(
                                    u"Invalid device ID: %1, falling back to default"_s.arg(id))));
        EXPECT_EQ(recordedDevice(), std::nullopt);
    }
}

TEST_F(AudioServiceDevices, ALeadingPlusSignIsAccepted) {
    service->selectDevice(u"+42"_s);
    EXPECT_EQ(recordedDevice(), 42U);
}

TEST_F(AudioServiceDevices, ASelectionIsNotCheckedAgainstTheList) {
    service->selectDevice(u"4294967295"_s);
    EXPECT_THAT(log.take(), ElementsAre(info(u"Selected audio device: 4294967295"_s)));
    service->startRecording();
    EXPECT_TRUE(service->isRecording());
    EXPECT_EQ(engine().deviceNumber, std::nullopt); // goes on with the default
    EXPECT_THAT(log.take(), ::testing::Contains(error(
                                u"Failed to set audio device 4294967295: OSStatus -10851"_s)));
}

TEST_F(AudioServiceDevices, ARunningEngineStaysWithItsDevice) {
    service->selectDevice(u"7"_s);
    service->startRecording();
    service->selectDevice(u"42"_s);
    EXPECT_EQ(engine().deviceNumber, 7U);
    EXPECT_EQ(host.enginesMade, 1);
}

TEST_F(AudioServiceDevices, KeepWarmAndMonitorUseTheSelectedDeviceToo) {
    service->selectDevice(u"42"_s);
    service->startKeepWarm();
    EXPECT_EQ(engine().deviceNumber, 42U);
    service->startMonitoring();
    EXPECT_EQ(engine().deviceNumber, 42U);
    EXPECT_EQ(host.engines.size(), 2U);
}

TEST_F(AudioServiceDevices, TheFormatIsThatOfTheSelectedDevice) {
    host.deviceFormats[42] = {48000.0, 2};
    service->selectDevice(u"42"_s);
    service->startRecording();
    ASSERT_EQ(host.convertersMade.size(), 1U);
    EXPECT_EQ(host.convertersMade[0].first, (AudioFormat{48000.0, 2}));
}
