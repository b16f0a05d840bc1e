#include "platform/linux/freedesktop/FreedesktopNotifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include <algorithm>
#include <utility>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace {

// The numbers of the notification specification.
constexpr uchar urgencyNormal = 1;
constexpr uchar urgencyCritical = 2;
constexpr int expiresAsTheServerLikes = -1;

const QString service = u"org.freedesktop.Notifications"_s;

QDBusMessage methodCall(const QString& method) {
    return QDBusMessage::createMethodCall(service, u"/org/freedesktop/Notifications"_s, service,
                                          method);
}

std::optional<QString> errorOf(const QDBusMessage& reply) {
    if (reply.type() != QDBusMessage::ErrorMessage) {
        return std::nullopt;
    }
    return reply.errorMessage().isEmpty() ? reply.errorName() : reply.errorMessage();
}

} // namespace

FreedesktopNotifications::FreedesktopNotifications(const QDBusConnection& bus)
    : m_bus(bus), m_serverWatcher(service, bus) {
    connect(&m_serverWatcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            &FreedesktopNotifications::serverChanged);
}

FreedesktopNotifications::~FreedesktopNotifications() = default;

void FreedesktopNotifications::requestAuthorization(std::function<void(Authorization)> completion) {
    completion({.granted = m_bus.isConnected(), .error = std::nullopt});
}

void FreedesktopNotifications::add(const NotificationRequest& request, Completion completion) {
    Completion superseded;
    const auto sameBanner =
        std::find_if(m_waiting.begin(), m_waiting.end(), [&](const Waiting& waiting) {
            return waiting.request.identifier == request.identifier;
        });
    if (sameBanner != m_waiting.end()) {
        superseded = std::move(sameBanner->completion);
        m_waiting.erase(sameBanner);
    }
    m_waiting.push_back({request, std::move(completion)});
    if (superseded) {
        superseded(std::nullopt);
    }
    sendWaiting();
}

void FreedesktopNotifications::serverChanged() {
    // Another server knows nothing of the banners of the last one, and may have other abilities.
    m_shown.clear();
    m_capabilities = Capabilities::unknown;
}

void FreedesktopNotifications::askCapabilities() {
    m_capabilities = Capabilities::asked;
    call(methodCall(u"GetCapabilities"_s), [this](const QDBusMessage& reply) {
        if (const auto error = errorOf(reply)) {
            m_capabilities = Capabilities::unknown;
            failWaiting(*error);
            return;
        }
        m_hasMarkup = reply.arguments().value(0).toStringList().contains(u"body-markup"_s);
        m_capabilities = Capabilities::known;
        sendWaiting();
    });
}

void FreedesktopNotifications::sendWaiting() {
    if (m_waiting.empty()) {
        return;
    }
    if (!m_bus.isConnected()) {
        failWaiting(u"no session bus"_s);
        return;
    }
    if (m_capabilities == Capabilities::unknown) {
        askCapabilities();
    }
    if (m_capabilities != Capabilities::known) {
        return;
    }
    for (auto waiting = m_waiting.begin(); waiting != m_waiting.end();) {
        // Its banner can be replaced only when the number of that is known.
        if (m_sent.contains(waiting->request.identifier)) {
            ++waiting;
        } else {
            send(*waiting);
            waiting = m_waiting.erase(waiting);
        }
    }
}

void FreedesktopNotifications::send(const Waiting& waiting) {
    const NotificationRequest& request = waiting.request;
    const uchar urgency =
        request.sound == NotificationSound::critical ? urgencyCritical : urgencyNormal;
    const QVariantMap hints{{u"category"_s, request.category},
                            {u"urgency"_s, QVariant::fromValue(urgency)},
                            {u"desktop-entry"_s, u"quorvin"_s}};
    const QStringList noActions;
    QDBusMessage message = methodCall(u"Notify"_s);
    message << u"Quorvin"_s << m_shown.value(request.identifier, 0U) << u"quorvin"_s
            << request.title << (m_hasMarkup ? request.body.toHtmlEscaped() : request.body)
            << noActions << hints << expiresAsTheServerLikes;
    m_sent.insert(request.identifier);
    call(message, [this, identifier = request.identifier,
                   completion = waiting.completion](const QDBusMessage& reply) {
        m_sent.remove(identifier);
        const auto error = errorOf(reply);
        if (!error) {
            m_shown.insert(identifier, reply.arguments().value(0).toUInt());
        }
        completion(error);
        sendWaiting();
    });
}

void FreedesktopNotifications::failWaiting(const QString& error) {
    for (const Waiting& waiting : std::exchange(m_waiting, {})) {
        waiting.completion(error);
    }
}

void FreedesktopNotifications::call(QDBusMessage message,
                                    std::function<void(const QDBusMessage& reply)> handler) {
    message.setAutoStartService(m_mayStartServer);
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, watcher, handler = std::move(handler)] {
                watcher->deleteLater();
                const QDBusMessage reply = watcher->reply();
                m_mayStartServer = reply.type() != QDBusMessage::ErrorMessage;
                handler(reply);
            });
}

} // namespace quorvin
