#pragma once

#include "services/agents/AgentTypes.h"

#include <QUuid>

namespace quorvin {

/// One row of the compact panel's session list.
struct CompactSessionInfo {
    QUuid id = QUuid::createUuid();
    QString type;
    QString title;
    ProcessID pid = 0;
    AgentSessionInfo sessionInfo;

    bool operator==(const CompactSessionInfo&) const = default;
};

} // namespace quorvin
