#include "models/AppSettings.h"

#include "platform/UserDefaults.h"

#include <cmath>
#include <limits>

namespace quorvin {

namespace {

/// Numbers out of the range of int are no whole number of seconds that anyone could mean.
int integerOrZero(const std::optional<double>& number) {
    if (!number || std::abs(*number) > std::numeric_limits<int>::max()) {
        return 0;
    }
    return static_cast<int>(*number);
}

/// A stored 0 reads as the default, on purpose: for these settings it is not kept across a restart.
template <typename T>
T unlessZero(T value, T fallback) {
    return value == T(0) ? fallback : value;
}

} // namespace

AppSettings AppSettings::read(const UserDefaults& store) {
    AppSettings s;
    s.language = store.string(SettingsKey::language).value_or(s.language);
    s.vadAutoStop = store.boolean(SettingsKey::vadAutoStop).value_or(s.vadAutoStop);
    s.silenceTimeout =
        unlessZero(integerOrZero(store.number(SettingsKey::silenceTimeout)), s.silenceTimeout);
    s.selectedDevice = store.string(SettingsKey::selectedDevice).value_or(s.selectedDevice);
    s.translateToEnglish =
        store.boolean(SettingsKey::translateToEnglish).value_or(s.translateToEnglish);
    s.appendMode = store.boolean(SettingsKey::appendMode).value_or(s.appendMode);
    s.windowOpacity =
        unlessZero(store.number(SettingsKey::windowOpacity).value_or(0.0), s.windowOpacity);
    s.engineTier = store.string(SettingsKey::engineTier).value_or(s.engineTier);
    s.inputGainDB = store.number(SettingsKey::inputGainDB).value_or(s.inputGainDB);
    s.noiseGatePercent =
        unlessZero(store.number(SettingsKey::noiseGatePercent).value_or(0.0), s.noiseGatePercent);
    s.alwaysOnTop = store.boolean(SettingsKey::alwaysOnTop).value_or(s.alwaysOnTop);
    s.agentsIncluded = store.boolean(SettingsKey::agentsIncluded).value_or(s.agentsIncluded);
    s.selectedTheme = store.string(SettingsKey::selectedTheme).value_or(s.selectedTheme);
    s.animationStyle = store.string(SettingsKey::animationStyle).value_or(s.animationStyle);
    s.soundsEnabled = storedSoundsEnabled(store);
    s.onboardingComplete =
        store.boolean(SettingsKey::onboardingComplete).value_or(s.onboardingComplete);
    return s;
}

} // namespace quorvin
