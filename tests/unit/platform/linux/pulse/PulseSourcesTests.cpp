#include "platform/linux/pulse/PulseSources.h"

#include <gmock/gmock.h>

using namespace quorvin;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;

namespace {

PulseSource source(const std::string& name) {
    PulseSource result;
    result.name = name;
    return result;
}

PulseSource monitor(const std::string& name) {
    PulseSource result = source(name);
    result.isMonitor = true;
    return result;
}

auto named(const std::string& name) {
    return Field(&PulseSource::name, name);
}

} // namespace

TEST(PulseSourcesTest, ANumberDependsOnTheNameAlone) {
    std::vector sources{source("alsa_input.pci-0000_00_1f.3.analog-stereo"), source("usb")};
    std::vector others{source("bluetooth"), source("usb"),
                       source("alsa_input.pci-0000_00_1f.3.analog-stereo")};
    assignNumbers(sources);
    assignNumbers(others);
    EXPECT_EQ(sources[0].number, 310482681U); // it stands in users' settings
    EXPECT_EQ(sources[0].number, others[2].number);
    EXPECT_EQ(sources[1].number, others[1].number);
    EXPECT_NE(sources[0].number, sources[1].number);
}

TEST(PulseSourcesTest, NamesWithOneDigestGetNumbersOfTheirOwn) {
    std::vector sources{source("alsa_input.usb-103724"), source("alsa_input.usb-106265")};
    assignNumbers(sources);
    EXPECT_EQ(sources[0].number, 2362560059U);
    EXPECT_EQ(sources[1].number, 2362560060U);
}

TEST(PulseSourcesTest, MonitorsAreNoMicrophones) {
    const std::vector sources{monitor("speakers.monitor"), source("headset"), source("camera"),
                              monitor("hdmi.monitor")};
    EXPECT_THAT(microphones(sources), ElementsAre(named("headset"), named("camera")));
}

TEST(PulseSourcesTest, MonitorsAreBetterThanNothing) {
    EXPECT_THAT(microphones({monitor("speakers.monitor")}), ElementsAre(named("speakers.monitor")));
    EXPECT_THAT(microphones({}), IsEmpty());
}

TEST(PulseSourcesTest, TheDefaultIsTheServersOrElseTheFirst) {
    const std::vector candidates{source("headset"), source("camera")};
    EXPECT_EQ(defaultMicrophone(candidates, "camera"), &candidates[1]);
    EXPECT_EQ(defaultMicrophone(candidates, "speakers.monitor"), &candidates[0]);
    EXPECT_EQ(defaultMicrophone(candidates, ""), &candidates[0]);
    EXPECT_EQ(defaultMicrophone({}, "camera"), nullptr);
}
