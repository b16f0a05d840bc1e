#pragma once

#include "models/UpdatePhase.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// The texts about updates.
class UpdateLabels final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// What the version badge tells under the pointer.
    Q_INVOKABLE [[nodiscard]] static QString
    tooltip(bool updateAvailable, const QString& latestVersion, const QString& version);
    /// What goes on, or what a click would do.
    Q_INVOKABLE [[nodiscard]] static QString subtitle(const quorvin::UpdatePhase& phase);
    /// Whole percents of a fraction, as "42%".
    Q_INVOKABLE [[nodiscard]] static QString percentage(double fraction);
};

} // namespace quorvin
