#pragma once

#include "platform/Workspace.h"

#include <QList>
#include <QMetaType>
#include <QString>

#include <optional>

namespace quorvin {

/// The coding agents that are served.
enum class AgentType { claude, opencode };

/// One agent that runs in a terminal, as a scan has seen it; it may have ended since.
struct AgentSessionInfo {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString terminal READ terminal CONSTANT)

public:
    /// Identity for lists, always equal to `pid`.
    ProcessID id = 0;
    ProcessID pid = 0;
    AgentType type = AgentType::claude;
    /// The name of the project directory, or the agent's word and process id.
    QString title;
    /// The full path of the terminal device; present on every scanned session.
    std::optional<QString> tty;
    /// One of `terminalApps`; absent when none of them runs.
    std::optional<QString> terminalBundleID;

    /// The terminal device for the eye; empty when there is none.
    [[nodiscard]] QString terminal() const { return tty.value_or(QString()); }

    bool operator==(const AgentSessionInfo&) const = default;
};

/// What one scan has found, in the order in which ps lists the processes.
struct AgentSessions {
    QList<AgentSessionInfo> claude;
    QList<AgentSessionInfo> opencode;
};

} // namespace quorvin
