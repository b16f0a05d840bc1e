#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

namespace quorvin::testing {

/// A message bus of the test's own, which knows no services but those the test describes.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    /// A new connection, as another program would make it. It is closed with the bus.
    [[nodiscard]] QDBusConnection connect();
    /// Lets the bus start `shellCommand` when somebody calls `service`. Before the first
    /// connection.
    void addActivatableService(const QString& service, const QString& shellCommand);
    /// As a crash would.
    void kill();

    [[nodiscard]] QString filePath(const QString& name) const { return m_directory.filePath(name); }

private:
    void start();

    QTemporaryDir m_directory;
    QProcess m_process;
    QString m_address;
    QStringList m_connections;
};

} // namespace quorvin::testing
