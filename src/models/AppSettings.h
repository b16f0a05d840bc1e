#pragma once

#include "services/signals/SoundSetting.h"

#include <QString>

namespace quorvin {

/// The keys of the settings store, with that of SoundSetting.h.
namespace SettingsKey {
inline const QString language = QStringLiteral("language");
inline const QString vadAutoStop = QStringLiteral("vadAutoStop");
inline const QString silenceTimeout = QStringLiteral("silenceTimeout");
inline const QString selectedDevice = QStringLiteral("selectedDevice");
inline const QString translateToEnglish = QStringLiteral("translateToEnglish");
inline const QString appendMode = QStringLiteral("appendMode");
inline const QString windowOpacity = QStringLiteral("windowOpacity");
inline const QString engineTier = QStringLiteral("engineTier");
inline const QString inputGainDB = QStringLiteral("inputGainDB");
inline const QString noiseGatePercent = QStringLiteral("noiseGatePercent");
inline const QString alwaysOnTop = QStringLiteral("alwaysOnTop");
inline const QString agentsIncluded = QStringLiteral("agentsIncluded");
inline const QString selectedTheme = QStringLiteral("selectedTheme");
inline const QString animationStyle = QStringLiteral("animationStyle");
inline const QString onboardingComplete = QStringLiteral("onboardingComplete");
} // namespace SettingsKey

/// Every setting of the program with its default.
struct AppSettings {
    QString language = QStringLiteral("en");
    bool vadAutoStop = true;
    int silenceTimeout = 12; ///< seconds
    QString selectedDevice = QStringLiteral("default");
    bool translateToEnglish = false;
    bool appendMode = true;
    double windowOpacity = 1.0;                   ///< 0 to 1
    QString engineTier = QStringLiteral("small"); ///< "small", "medium" or "large"
    double inputGainDB = 0.0;                     ///< decibels
    double noiseGatePercent = 1.0;                ///< percent of full scale
    bool alwaysOnTop = true;
    bool agentsIncluded = true;
    QString selectedTheme = QStringLiteral("razer");
    QString animationStyle = QStringLiteral("wave");
    bool soundsEnabled = true;
    bool onboardingComplete = false;

    /// Reads the store. A key that is absent or holds another type gives the default.
    [[nodiscard]] static AppSettings read(const UserDefaults& store);
};

} // namespace quorvin
