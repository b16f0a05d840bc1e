#include "models/AppSettings.h"
#include "support/fakes/MemoryUserDefaults.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::MemoryUserDefaults;

namespace {

class AppSettingsTest : public ::testing::Test {
protected:
    [[nodiscard]] AppSettings read() const { return AppSettings::read(store); }
    MemoryUserDefaults store;
};

} // namespace

TEST_F(AppSettingsTest, AnEmptyStoreGivesTheDefaults) {
    const AppSettings s = read();
    EXPECT_EQ(s.language, u"en"_s);
    EXPECT_TRUE(s.vadAutoStop);
    EXPECT_EQ(s.silenceTimeout, 12);
    EXPECT_EQ(s.selectedDevice, u"default"_s);
    EXPECT_FALSE(s.translateToEnglish);
    EXPECT_TRUE(s.appendMode);
    EXPECT_EQ(s.windowOpacity, 1.0);
    EXPECT_EQ(s.engineTier, u"small"_s);
    EXPECT_EQ(s.inputGainDB, 0.0);
    EXPECT_EQ(s.noiseGatePercent, 1.0);
    EXPECT_TRUE(s.alwaysOnTop);
    EXPECT_TRUE(s.agentsIncluded);
    EXPECT_EQ(s.selectedTheme, u"razer"_s);
    EXPECT_EQ(s.animationStyle, u"wave"_s);
    EXPECT_TRUE(s.soundsEnabled);
    EXPECT_FALSE(s.onboardingComplete);
}

TEST_F(AppSettingsTest, StoredValuesAreRead) {
    store.setString(u"language"_s, u"de"_s);
    store.setBoolean(u"vadAutoStop"_s, false);
    store.setInteger(u"silenceTimeout"_s, 5);
    store.setDouble(u"windowOpacity"_s, 0.5);
    store.setDouble(u"inputGainDB"_s, -3.5);
    store.setBoolean(u"soundsEnabled"_s, false);
    store.setBoolean(u"onboardingComplete"_s, true);
    const AppSettings s = read();
    EXPECT_EQ(s.language, u"de"_s);
    EXPECT_FALSE(s.vadAutoStop);
    EXPECT_EQ(s.silenceTimeout, 5);
    EXPECT_EQ(s.windowOpacity, 0.5);
    EXPECT_EQ(s.inputGainDB, -3.5);
    EXPECT_FALSE(s.soundsEnabled);
    EXPECT_TRUE(s.onboardingComplete);
}

TEST_F(AppSettingsTest, AStoredZeroReadsAsTheDefaultForThreeSettings) {
    store.setInteger(u"silenceTimeout"_s, 0);
    store.setDouble(u"windowOpacity"_s, 0.0);
    store.setDouble(u"noiseGatePercent"_s, 0.0);
    const AppSettings s = read();
    EXPECT_EQ(s.silenceTimeout, 12);
    EXPECT_EQ(s.windowOpacity, 1.0);
    EXPECT_EQ(s.noiseGatePercent, 1.0);
}

TEST_F(AppSettingsTest, AStringWhereABooleanIsExpectedGivesTheDefault) {
    store.setString(u"vadAutoStop"_s, u"false"_s);
    store.setString(u"translateToEnglish"_s, u"true"_s);
    store.setString(u"alwaysOnTop"_s, u"no"_s);
    const AppSettings s = read();
    EXPECT_TRUE(s.vadAutoStop);
    EXPECT_FALSE(s.translateToEnglish);
    EXPECT_TRUE(s.alwaysOnTop);
}

TEST_F(AppSettingsTest, ABooleanWhereAStringOrNumberIsExpectedGivesTheDefault) {
    store.setBoolean(u"language"_s, true);
    store.setBoolean(u"silenceTimeout"_s, true);
    store.setBoolean(u"noiseGatePercent"_s, true);
    const AppSettings s = read();
    EXPECT_EQ(s.language, u"en"_s);
    EXPECT_EQ(s.silenceTimeout, 12);
    EXPECT_EQ(s.noiseGatePercent, 1.0);
}

TEST_F(AppSettingsTest, ASoundsKeyOfAnotherTypeIsPresentAndReadsAsFalse) {
    store.setString(u"soundsEnabled"_s, u"maybe"_s);
    EXPECT_FALSE(read().soundsEnabled);
}

TEST_F(AppSettingsTest, ANumberBeyondEveryTimeoutGivesTheDefault) {
    store.setDouble(u"silenceTimeout"_s, 1e300);
    EXPECT_EQ(read().silenceTimeout, 12);
}
