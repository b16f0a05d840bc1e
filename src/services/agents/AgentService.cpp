#include "services/agents/AgentService.h"

#include "services/agents/SessionScan.h"

#include <QPointer>

#include <utility>

namespace quorvin {

AgentService::AgentService(Scheduler& scheduler, Workspace& workspace,
                           ProcessTableFactory makeProcessTable, Background runInBackground,
                           Transport transport)
    : m_scheduler(scheduler)
    , m_workspace(workspace)
    , m_makeProcessTable(std::make_shared<const ProcessTableFactory>(std::move(makeProcessTable)))
    , m_runInBackground(std::move(runInBackground))
    , m_transport(transport) {}

bool AgentService::isFresh() const {
    const bool hasSessions = !m_claudeSessions.isEmpty() || !m_opencodeSessions.isEmpty();
    if (!m_lastScanTime || !hasSessions) {
        return false;
    }
    constexpr double millisecondsPerSecond = 1000.0;
    const auto age = static_cast<double>(m_lastScanTime->msecsTo(m_scheduler.wallTime()));
    // A scan of the future was made before somebody set the clock back.
    return age >= 0 && age < cacheValidity * millisecondsPerSecond;
}

Task<> AgentService::refreshSessions() {
    if (!isFresh()) {
        co_await refreshSessionsForce();
    }
}

Task<> AgentService::refreshSessionsForce() {
    const QPointer<AgentService> self(this);
    Pending<AgentSessions> result;
    m_runInBackground([makeTable = std::weak_ptr(m_makeProcessTable),
                       running = m_workspace.runningApplications(), &scheduler = m_scheduler,
                       result] {
        AgentSessions found;
        if (const auto make = makeTable.lock()) { // else the service has gone
            found = scanSessions(*(*make)(), running);
        }
        scheduler.post(
            [result, found = std::move(found)]() mutable { result.resolve(std::move(found)); });
    });
    AgentSessions found = co_await result;
    if (!self) {
        co_return;
    }
    m_claudeSessions = std::move(found.claude);
    Q_EMIT claudeSessionsChanged();
    if (!self) {
        co_return; // a listener has let the service go
    }
    m_opencodeSessions = std::move(found.opencode);
    Q_EMIT opencodeSessionsChanged();
    if (self) {
        m_lastScanTime = m_scheduler.wallTime();
    }
}

} // namespace quorvin
