#include "platform/linux/terminals/SessionBus.h"

#include "platform/linux/terminals/BusReplies.h"
#include "platform/linux/terminals/HelperResult.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QPointer>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

SessionBus::Method daemonMethod(const QString& name) {
    return {u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, name};
}

} // namespace

SessionBus::SessionBus(Scheduler& scheduler, QDBusConnection connection)
    : m_scheduler(scheduler), m_connection(std::move(connection)) {}

Task<std::optional<QVariantList>> SessionBus::call(Method method, QVariantList arguments,
                                                   Scheduler::Duration limit) {
    if (!m_connection.isConnected()) {
        co_return std::nullopt; // a call would never end
    }
    QDBusMessage message =
        QDBusMessage::createMethodCall(method.service, method.path, method.interface, method.name);
    message.setArguments(arguments);
    message.setAutoStartService(false); // a terminal that doesn't run has no tab to show
    auto* const watcher = new QDBusPendingCallWatcher(m_connection.asyncCall(message), &m_calls);

    const HelperResult<std::optional<QVariantList>> result(*watcher);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, result] {
        result.set(watcher->isError() ? std::nullopt : std::optional(watcher->reply().arguments()));
        watcher->deleteLater();
    });
    m_scheduler.postDelayed(limit, [watched = QPointer(watcher), result] {
        if (watched) {
            result.set(std::nullopt);
            delete watched.data();
        }
    });
    co_return co_await result;
}

Task<std::optional<ProcessID>> SessionBus::processOf(QString service) {
    const Method ask = daemonMethod(u"GetConnectionUnixProcessID"_s);
    const QVariantList arguments{service};
    const auto reply = co_await call(ask, arguments, usualLimit);
    co_return reply ? busReplies::process(*reply) : std::nullopt;
}

Task<QStringList> SessionBus::services() {
    const Method list = daemonMethod(u"ListNames"_s);
    const QVariantList arguments;
    const auto reply = co_await call(list, arguments, usualLimit);
    co_return reply ? busReplies::texts(*reply) : QStringList();
}

Task<QStringList> SessionBus::children(QString service, QString path) {
    const Method introspect{service, path, u"org.freedesktop.DBus.Introspectable"_s,
                            u"Introspect"_s};
    const QVariantList arguments;
    const auto reply = co_await call(introspect, arguments, usualLimit);
    co_return reply ? busReplies::childNames(*reply) : QStringList();
}

} // namespace quorvin
