#pragma once

#include "platform/Scheduler.h"
#include "platform/Workspace.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariantList>

#include <optional>

namespace quorvin {

/// Questions to the programs on the session bus. Main thread, which isn't held.
class SessionBus {
public:
    /// One operation of one object.
    struct Method {
        QString service;
        QString path;
        QString interface;
        QString name;
    };

    static constexpr Scheduler::Duration usualLimit = std::chrono::seconds(1);

    SessionBus(Scheduler& scheduler, QDBusConnection connection);

    // All throw AutomationEnded when this object goes meanwhile.

    /// What the operation returns; absent when it fails or has not answered within `limit`.
    [[nodiscard]] Task<std::optional<QVariantList>> call(Method method, QVariantList arguments,
                                                         Scheduler::Duration limit = usualLimit);

    /// The process that owns a name on the bus.
    [[nodiscard]] Task<std::optional<ProcessID>> processOf(QString service);
    /// All the names on the bus.
    [[nodiscard]] Task<QStringList> services();
    /// The names of the objects right below `path`.
    [[nodiscard]] Task<QStringList> children(QString service, QString path);

private:
    Scheduler& m_scheduler;
    QDBusConnection m_connection;
    QObject m_calls; // owns those that are under way
};

} // namespace quorvin
