#pragma once

#include "models/AppState.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// How an agent, by its name, and its sessions are shown in lists; the same in all themes.
class AgentLook final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// That of OpenCode for every name but "Claude".
    Q_INVOKABLE [[nodiscard]] static QColor accent(const QString& agentName);
    Q_INVOKABLE [[nodiscard]] static QString initial(const QString& agentName);
    /// The process and its terminal: "pid 4711 · /dev/pts/2".
    Q_INVOKABLE [[nodiscard]] static QString
    sessionDetail(const quorvin::AgentSessionInfo& session);
};

} // namespace quorvin
