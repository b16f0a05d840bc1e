#pragma once

#include "platform/ProcessTable.h"
#include "platform/Workspace.h"
#include "services/agents/AgentTypes.h"

#include <vector>

namespace quorvin {

/// Finds the agents that run in terminals now, at most one for each terminal device, and the
/// terminal application that each belongs to. `running` are the applications of the desktop. A
/// table that can't be read has no sessions. Blocks as the table does, so it is kept from the main
/// thread.
[[nodiscard]] AgentSessions scanSessions(ProcessTable& table,
                                         const std::vector<RunningApplication>& running);

} // namespace quorvin
