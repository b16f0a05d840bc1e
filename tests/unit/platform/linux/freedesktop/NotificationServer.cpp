#include "unit/platform/linux/freedesktop/NotificationServer.h"

#include <QDBusMessage>

#include <stdexcept>
#include <utility>

namespace quorvin::testing {

using namespace Qt::Literals::StringLiterals;

NotificationServer::NotificationServer(QDBusConnection bus) : m_bus(std::move(bus)) {
    if (!m_bus.registerObject(u"/org/freedesktop/Notifications"_s, this,
                              QDBusConnection::ExportAllInvokables) ||
        !m_bus.registerService(u"org.freedesktop.Notifications"_s)) {
        throw std::runtime_error("The name is taken");
    }
}

NotificationServer::~NotificationServer() {
    m_bus.unregisterService(u"org.freedesktop.Notifications"_s);
    m_bus.unregisterObject(u"/org/freedesktop/Notifications"_s);
}

void NotificationServer::releaseReplies() {
    holdsReplies = false;
    for (const QDBusMessage& reply : std::exchange(m_heldReplies, {})) {
        m_bus.send(reply);
    }
}

QStringList NotificationServer::GetCapabilities() {
    ++capabilityCalls;
    return reply(capabilities).toStringList();
}

uint NotificationServer::Notify(const QString& appName, uint replacesId, const QString& appIcon,
                                const QString& summary, const QString& body,
                                const QStringList& actions, const QVariantMap& hints,
                                int expireTimeout) {
    calls.push_back({appName, replacesId, appIcon, summary, body, actions, hints, expireTimeout});
    if (!error.isEmpty()) {
        sendErrorReply(u"org.example.Error"_s, error);
        return 0;
    }
    return reply(replacesId != 0 ? replacesId : nextId++).toUInt();
}

QVariant NotificationServer::reply(const QVariant& value) {
    if (holdsReplies) {
        setDelayedReply(true);
        m_heldReplies.push_back(message().createReply(value));
    }
    return value;
}

} // namespace quorvin::testing
