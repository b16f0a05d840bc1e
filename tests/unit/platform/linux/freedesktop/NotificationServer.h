#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <vector>

namespace quorvin::testing {

/// A desktop's notification server without a screen.
class NotificationServer : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Call {
        QString appName;
        uint replacesId = 0;
        QString appIcon;
        QString summary;
        QString body;
        QStringList actions;
        QVariantMap hints;
        int expireTimeout = 0;
    };

    /// Takes the name on the bus.
    explicit NotificationServer(QDBusConnection bus);
    /// Gives it up.
    ~NotificationServer() override;

    /// Replies to what was received while `holdsReplies` was set.
    void releaseReplies();

    QStringList capabilities;
    int capabilityCalls = 0;
    std::vector<Call> calls;
    uint nextId = 41;
    bool holdsReplies = false;
    /// What `Notify` fails with; nothing when empty.
    QString error;

    Q_INVOKABLE QStringList GetCapabilities();
    Q_INVOKABLE uint Notify(const QString& appName, uint replacesId, const QString& appIcon,
                            const QString& summary, const QString& body, const QStringList& actions,
                            const QVariantMap& hints, int expireTimeout);

private:
    QVariant reply(const QVariant& value);

    QDBusConnection m_bus;
    std::vector<QDBusMessage> m_heldReplies;
};

} // namespace quorvin::testing
