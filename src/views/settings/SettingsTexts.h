#pragma once

#include "models/AppState.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// How the settings show values.
class SettingsTexts : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// The system and its version: "Debian GNU/Linux 12 (bookworm)".
    Q_PROPERTY(QString platform READ platform CONSTANT)

public:
    [[nodiscard]] static QString platform();
    /// In whole decibels with a sign: "+3 dB".
    Q_INVOKABLE [[nodiscard]] static QString gain(double decibels);
    /// Whole percents, the rest cut off.
    Q_INVOKABLE [[nodiscard]] static QString percent(double percents);
    /// The whole percents of a fraction of 1.
    Q_INVOKABLE [[nodiscard]] static QString percentOfFraction(double fraction);
    /// A name as a title: "Dna".
    Q_INVOKABLE [[nodiscard]] static QString capitalized(const QString& name);
    /// Of a bar that shows an input level from 0 to 1.
    Q_INVOKABLE [[nodiscard]] static QColor levelColor(double level);
};

} // namespace quorvin
