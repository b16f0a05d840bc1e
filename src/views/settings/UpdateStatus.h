#pragma once

#include "models/AppState.h"

#include <QColor>
#include <QList>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// Something new in this version.
struct ReleaseNote {
    Q_GADGET
    Q_PROPERTY(QString symbol MEMBER symbol CONSTANT)
    Q_PROPERTY(QColor color MEMBER color CONSTANT)
    Q_PROPERTY(QString text MEMBER text CONSTANT)

public:
    QString symbol;
    QColor color;
    QString text;

    bool operator==(const ReleaseNote&) const = default;
};

/// What the settings tell of versions.
class UpdateStatus : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QList<quorvin::ReleaseNote> releaseNotes READ releaseNotes CONSTANT)

public:
    /// What goes on, or else what the last check found.
    Q_INVOKABLE [[nodiscard]] static QString
    text(const quorvin::UpdatePhase& phase, bool updateAvailable, const QString& latestVersion);
    /// Nothing goes on, and nothing newer is known.
    Q_INVOKABLE [[nodiscard]] static bool isUpToDate(const quorvin::UpdatePhase& phase,
                                                     bool updateAvailable);
    /// The version, and the newer one if there is one.
    Q_INVOKABLE [[nodiscard]] static QString version(const QString& version, bool updateAvailable,
                                                     const QString& latestVersion);
    [[nodiscard]] static QList<ReleaseNote> releaseNotes();
};

} // namespace quorvin
