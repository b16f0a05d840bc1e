#pragma once

#include "platform/UserNotifications.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QHash>
#include <QObject>
#include <QSet>

#include <deque>

class QDBusMessage;

namespace quorvin {

/// Banners of the desktop's notification server (Desktop Notifications Specification 1.2, D-Bus
/// name org.freedesktop.Notifications). Nothing here waits for the server. Without a session bus
/// nothing is authorized; a server that is missing is asked to start once.
class FreedesktopNotifications final : public QObject, public UserNotifications {
    Q_OBJECT

public:
    explicit FreedesktopNotifications(const QDBusConnection& bus);
    ~FreedesktopNotifications() override;

    /// Granted with a session bus; the desktop has no question to ask.
    void requestAuthorization(std::function<void(Authorization)> completion) override;
    /// A request that is replaced before it could be shown counts as shown.
    void add(const NotificationRequest& request,
             std::function<void(std::optional<QString> error)> completion) override;

private:
    using Completion = std::function<void(std::optional<QString> error)>;
    struct Waiting {
        NotificationRequest request;
        Completion completion;
    };
    enum class Capabilities { unknown, asked, known };

    void serverChanged();
    void askCapabilities();
    void sendWaiting();
    void send(const Waiting& waiting);
    void failWaiting(const QString& error);
    /// Sends `message` and calls `handler` with its reply, be it an error.
    void call(QDBusMessage message, std::function<void(const QDBusMessage& reply)> handler);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_serverWatcher;
    Capabilities m_capabilities = Capabilities::unknown;
    bool m_hasMarkup = false;
    bool m_mayStartServer = true;    ///< false while the last call has failed
    std::deque<Waiting> m_waiting;   ///< in order, one an identifier
    QSet<QString> m_sent;            ///< identifiers whose reply has not come yet
    QHash<QString, quint32> m_shown; ///< the server's number of a banner, by identifier
};

} // namespace quorvin
