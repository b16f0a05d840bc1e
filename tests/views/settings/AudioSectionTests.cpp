#include "SettingsViewTest.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class AudioSection : public SettingsViewTest {
protected:
    AudioSection() {
        audioHost.deviceList = {{.number = 7, .name = "Desk", .inputChannelCount = 1},
                                {.number = 9, .name = "Headset", .inputChannelCount = 2}};
    }
    [[nodiscard]] QString shownMicrophone() {
        return item(u"microphonePicker"_s)->property("displayText").toString();
    }
};

} // namespace

TEST_F(AudioSection, HasItsRows) {
    open(Tab::audio);
    EXPECT_EQ(cards(), QStringList({u"Input Device: Microphone"_s, u"Live Level: Input Level"_s,
                                    u"Processing: Input Gain, Noise Gate"_s}));
    EXPECT_FALSE(itemIn(row(u"Microphone"_s), u"rowDescription"_s)->isVisible());
    EXPECT_EQ(descriptionOf(u"Input Level"_s), u"Real-time microphone signal"_s);
    EXPECT_EQ(descriptionOf(u"Input Gain"_s), u"Boost or cut microphone signal"_s);
    EXPECT_EQ(descriptionOf(u"Noise Gate"_s), u"Filter background noise below threshold"_s);
}

TEST_F(AudioSection, ChoosesTheMicrophoneOfTheNextTake) {
    open(Tab::audio);
    QQuickItem* const picker = item(u"microphonePicker"_s);
    EXPECT_EQ(picker->width(), 180);
    EXPECT_EQ(shownMicrophone(), u"System Default"_s);
    EXPECT_EQ(entriesOf(picker), QStringList({u"System Default"_s, u"Desk"_s, u"Headset"_s}));
    choose(picker, u"Headset"_s);
    EXPECT_EQ(app().selectedDevice(), u"9"_s);
    EXPECT_EQ(defaults.string(u"selectedDevice"_s), u"9"_s);
    app().startRecording();
    EXPECT_EQ(selectedDeviceOfTheTake(), 9U);
    app().cancelRecording();
    choose(picker, u"System Default"_s);
    EXPECT_EQ(app().selectedDevice(), u"default"_s);
    app().startRecording();
    EXPECT_EQ(selectedDeviceOfTheTake(), std::nullopt);
    app().cancelRecording();
}

TEST_F(AudioSection, ADeviceThatIsGoneShowsNoEntryUntilItIsBackAndTheListRefreshed) {
    defaults.setString(u"selectedDevice"_s, u"11"_s);
    open(Tab::audio);
    EXPECT_EQ(shownMicrophone(), u""_s);
    EXPECT_EQ(app().selectedDevice(), u"11"_s);
    audioHost.deviceList.push_back({.number = 11, .name = "Studio", .inputChannelCount = 1});
    EXPECT_EQ(shownMicrophone(), u""_s);
    clickOn(u"refreshDevicesButton"_s);
    EXPECT_EQ(shownMicrophone(), u"Studio"_s);
    audioHost.deviceList.pop_back();
    clickOn(u"refreshDevicesButton"_s);
    EXPECT_EQ(shownMicrophone(), u""_s);
    EXPECT_EQ(app().selectedDevice(), u"11"_s);
}

TEST_F(AudioSection, RefreshingTheListLeavesARunningTakeAlone) {
    open(Tab::audio);
    app().startRecording();
    speak();
    audioHost.deviceList.push_back({.number = 11, .name = "Studio", .inputChannelCount = 1});
    clickOn(u"refreshDevicesButton"_s);
    EXPECT_TRUE(app().isRecording());
    EXPECT_TRUE(app().audioService().isRecording());
    EXPECT_EQ(app().availableDevices().last().name, u"Studio"_s);
    const double before = app().recordingDuration();
    speak();
    EXPECT_GT(app().recordingDuration(), before);
    app().cancelRecording();
}

TEST_F(AudioSection, TheRefreshButtonSaysWhatItDoes) {
    open(Tab::audio);
    QQuickItem* const button = item(u"refreshDevicesButton"_s);
    EXPECT_EQ(button->property("systemName"), u"arrow.clockwise"_s);
    QObject* const tip = button->findChild<QObject*>(u"helpTip"_s);
    ASSERT_NE(tip, nullptr);
    EXPECT_EQ(tip->property("text"), u"Refresh device list"_s);
    EXPECT_EQ(accessible(button)->text(QAccessible::Name), u"Refresh device list"_s);
}

TEST_F(AudioSection, TheBarShowsTheLevelOfATake) {
    open(Tab::audio);
    const QRectF bar = frameOf(u"levelBar"_s);
    EXPECT_EQ(bar.size(), QSizeF(160, 10));
    EXPECT_EQ(item(u"levelBar"_s)->property("radius").toDouble(), 4);
    expectColor(colorOf(u"levelBar"_s), withAlpha(Qt::white, 0.08));
    EXPECT_EQ(item(u"levelFill"_s)->width(), 0);
    const QList<std::pair<double, QString>> levels{
        {0.5, u"#22c55e"_s}, {0.7, u"#f59e0b"_s}, {0.95, u"#ef4444"_s}};
    app().startRecording();
    for (const auto& [level, fill] : levels) {
        setLevel(level);
        advance(80ms); // one frame to start, and the animation
        EXPECT_NEAR(item(u"levelFill"_s)->width(), app().audioLevel() * 160, 0.5);
        EXPECT_NEAR(app().audioLevel(), level, 0.05);
        EXPECT_EQ(colorOf(u"levelFill"_s), QColor(fill));
    }
    app().cancelRecording();
}

TEST_F(AudioSection, TheBarFollowsWithinATwentiethOfASecond) {
    show(u"AudioLevelBar { level: 0 }"_s);
    root()->setProperty("level", 0.5);
    advance(16ms); // the frame that starts it
    advance(25ms);
    const double half = item(u"levelFill"_s)->width();
    EXPECT_GT(half, 10);
    EXPECT_LT(half, 70);
    advance(30ms);
    EXPECT_EQ(item(u"levelFill"_s)->width(), 80);
    root()->setProperty("level", 3.0);
    advance(80ms);
    EXPECT_EQ(item(u"levelFill"_s)->width(), 160);
}

TEST_F(AudioSection, TheGainGoesFromMinusTwelveToTwelveDecibels) {
    open(Tab::audio);
    QQuickItem* const slider = control(u"Input Gain"_s, u"slider"_s);
    QQuickItem* const value = control(u"Input Gain"_s, u"sliderValue"_s);
    EXPECT_EQ(slider->width(), 100);
    EXPECT_EQ(value->width(), 44);
    EXPECT_EQ(value->property("text"), u"+0 dB"_s);
    app().startRecording();
    setLevel(0.2);
    const double before = app().audioLevel();
    press(slider, Qt::Key_Right, 6);
    EXPECT_EQ(app().inputGainDB(), 6);
    EXPECT_EQ(value->property("text"), u"+6 dB"_s);
    setLevel(0.2);
    EXPECT_NEAR(app().audioLevel(), before * 2, 0.02) << "handed on to the microphone";
    app().cancelRecording();
    press(slider, Qt::Key_Left, 30);
    EXPECT_EQ(defaults.number(u"inputGainDB"_s), -12);
    EXPECT_EQ(value->property("text"), u"-12 dB"_s);
    EXPECT_LE(value->property("contentWidth").toDouble(), 44);
    press(slider, Qt::Key_Right, 30);
    EXPECT_EQ(app().inputGainDB(), 12);
}

TEST_F(AudioSection, TheGateGoesFromNothingToFivePercent) {
    open(Tab::audio);
    QQuickItem* const slider = control(u"Noise Gate"_s, u"slider"_s);
    QQuickItem* const value = control(u"Noise Gate"_s, u"sliderValue"_s);
    EXPECT_EQ(slider->width(), 100);
    EXPECT_EQ(value->width(), 44);
    EXPECT_EQ(value->property("text"), u"1%"_s);
    press(slider, Qt::Key_Right);
    EXPECT_EQ(app().noiseGatePercent(), 1.5);
    EXPECT_EQ(value->property("text"), u"1%"_s) << "cut off";
    press(slider, Qt::Key_Right, 20);
    EXPECT_EQ(app().noiseGatePercent(), 5);
    app().startRecording();
    setLevel(0.06);
    EXPECT_LT(app().audioLevel(), 0.001) << "an RMS of 0.04 is below the gate";
    press(slider, Qt::Key_Left, 20);
    EXPECT_EQ(app().noiseGatePercent(), 0);
    EXPECT_EQ(value->property("text"), u"0%"_s);
    setLevel(0.06);
    EXPECT_NEAR(app().audioLevel(), 0.06, 0.01);
    app().cancelRecording();
}
