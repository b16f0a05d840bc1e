#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// What is known of a permission, and how it is shown.
class PermissionStatuses : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    enum class PermissionStatus { granted, denied, unknown };
    Q_ENUM(PermissionStatus)

    /// Unknown as long as nobody has answered, and nothing says that it is there.
    Q_INVOKABLE [[nodiscard]] static quorvin::PermissionStatuses::PermissionStatus
    of(bool isAuthorized, bool isKnown);
    Q_INVOKABLE [[nodiscard]] static QString
    label(quorvin::PermissionStatuses::PermissionStatus status);
    Q_INVOKABLE [[nodiscard]] static QColor
    color(quorvin::PermissionStatuses::PermissionStatus status);
};

} // namespace quorvin
