#pragma once

#include "models/AppState.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// The short texts of the compact view.
class CompactLabels final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// The first word of the selected device's name, at most 8 characters of it.
    Q_INVOKABLE [[nodiscard]] static QString
    micLabel(const QList<quorvin::AudioInputDevice>& availableDevices,
             const QString& selectedDevice);
    /// Whole minutes and seconds, as "1:05".
    Q_INVOKABLE [[nodiscard]] static QString duration(double seconds);
    Q_INVOKABLE [[nodiscard]] static int wordCount(const QString& text);
    /// What a take needs and doesn't have, one sentence; empty when nothing is missing.
    Q_INVOKABLE [[nodiscard]] static QString missing(bool micOK, bool axOK, bool modelOK);
};

} // namespace quorvin
