#pragma once

#include "models/UpdatePhase.h"

#include <QObject>
#include <QString>

namespace quorvin::testing {

/// What views see of updates, in any phase that a test wants.
class UpdateState : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(bool updateAvailable MEMBER updateAvailable NOTIFY changed)
    Q_PROPERTY(QString latestVersion MEMBER latestVersion NOTIFY changed)
    Q_PROPERTY(quorvin::UpdatePhase updatePhase MEMBER updatePhase NOTIFY changed)

public:
    [[nodiscard]] static QString version() { return QStringLiteral("1.2.3"); }

    Q_INVOKABLE void installUpdate() { ++installs; }
    Q_INVOKABLE void retryUpdate() { ++retries; }

    void offer(const QString& newerVersion) {
        updateAvailable = true;
        latestVersion = newerVersion;
        Q_EMIT changed();
    }
    void withdraw() {
        updateAvailable = false;
        Q_EMIT changed();
    }
    void enter(const decltype(UpdatePhase::value)& phase) {
        updatePhase.value = phase;
        Q_EMIT changed();
    }

    bool updateAvailable = false;
    QString latestVersion;
    UpdatePhase updatePhase;
    int installs = 0;
    int retries = 0;

Q_SIGNALS:
    void changed();
};

} // namespace quorvin::testing
