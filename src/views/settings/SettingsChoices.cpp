#include "views/settings/SettingsChoices.h"

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

QList<SettingsChoice> SettingsChoices::languages() {
    // Ukrainian is offered and yet not among the engine's supported languages: deliberate.
    return {
        {u"Auto Detect"_s, u"auto"_s}, {u"English"_s, u"en"_s}, {u"Ukrainian"_s, u"uk"_s},
        {u"Russian"_s, u"ru"_s},       {u"Spanish"_s, u"es"_s}, {u"French"_s, u"fr"_s},
        {u"German"_s, u"de"_s},        {u"Chinese"_s, u"zh"_s}, {u"Japanese"_s, u"ja"_s},
    };
}

QList<SettingsChoice> SettingsChoices::models() {
    return {{u"Small  (fast)"_s, u"small"_s},
            {u"Medium (balanced)"_s, u"medium"_s},
            {u"Large  (best)"_s, u"large"_s}};
}

QStringList SettingsChoices::animations() {
    return {u"wave"_s, u"pulse"_s, u"comet"_s,  u"bars"_s, u"orbit"_s,
            u"nova"_s, u"dna"_s,   u"plasma"_s, u"radar"_s};
}

QList<SettingsChoice> SettingsChoices::microphones(const QList<AudioInputDevice>& devices) {
    const QString systemDefault = u"default"_s;
    QList<SettingsChoice> choices{{u"System Default"_s, systemDefault}};
    for (const AudioInputDevice& device : devices) {
        if (device.id != systemDefault) { // the list has a row for it as well
            choices.append({device.name, device.id});
        }
    }
    return choices;
}

} // namespace quorvin
