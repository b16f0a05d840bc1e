#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// The sections of the settings, in the order in which the sidebar lists them.
class SettingsTabs : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(int count READ count CONSTANT)

public:
    enum class SettingsTab {
        general,
        audio,
        appearance,
        agents,
        shortcuts,
        permissions,
        updates,
        about
    };
    Q_ENUM(SettingsTab)

    [[nodiscard]] static int count();
    Q_INVOKABLE [[nodiscard]] static QString title(quorvin::SettingsTabs::SettingsTab tab);
    Q_INVOKABLE [[nodiscard]] static QString symbol(quorvin::SettingsTabs::SettingsTab tab);
};

} // namespace quorvin
