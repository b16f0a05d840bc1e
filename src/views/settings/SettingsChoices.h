#pragma once

#include "models/AppState.h"

#include <QList>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// An entry of a picker.
struct SettingsChoice {
    Q_GADGET
    Q_PROPERTY(QString text MEMBER text CONSTANT)
    Q_PROPERTY(QString value MEMBER value CONSTANT)

public:
    QString text;
    QString value; ///< what the setting keeps

    bool operator==(const SettingsChoice&) const = default;
};

/// What the pickers of the settings offer.
class SettingsChoices : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Not those that the engine is asked for: Ukrainian is offered, and goes out as "auto".
    Q_PROPERTY(QList<quorvin::SettingsChoice> languages READ languages CONSTANT)
    Q_PROPERTY(QList<quorvin::SettingsChoice> models READ models CONSTANT)
    /// Of the ring.
    Q_PROPERTY(QStringList animations READ animations CONSTANT)

public:
    [[nodiscard]] static QList<SettingsChoice> languages();
    [[nodiscard]] static QList<SettingsChoice> models();
    [[nodiscard]] static QStringList animations();
    /// "System Default" and then the devices, each of them once.
    Q_INVOKABLE [[nodiscard]] static QList<quorvin::SettingsChoice>
    microphones(const QList<quorvin::AudioInputDevice>& devices);
};

} // namespace quorvin
