#include "views/settings/SettingsTexts.h"

#include "theme/HexColor.h"

#include <QSysInfo>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

QString SettingsTexts::platform() {
    return QSysInfo::prettyProductName();
}

QString SettingsTexts::gain(double decibels) {
    return QString::asprintf("%+.0f dB", decibels);
}

QString SettingsTexts::percent(double percents) {
    return QString::number(std::trunc(percents), 'f', 0) + u'%';
}

QString SettingsTexts::percentOfFraction(double fraction) {
    constexpr double whole = 100;
    return percent(fraction * whole);
}

QString SettingsTexts::capitalized(const QString& name) {
    return name.left(1).toUpper() + name.mid(1);
}

QColor SettingsTexts::levelColor(double level) {
    constexpr double loud = 0.6;
    constexpr double tooLoud = 0.85;
    if (level > tooLoud) {
        return hexColor(u"ef4444");
    }
    return hexColor(level > loud ? u"f59e0b" : u"22c55e");
}

} // namespace quorvin
