#include "services/signals/NotificationService.h"

#include "support/Text.h"

#include <QLoggingCategory>
#include <QPointer>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(lcNotifications, "com.quorvin.Notifications", QtInfoMsg)

constexpr qsizetype maxTextLength = 100;

} // namespace

NotificationService::NotificationService(UserNotifications& notifications, QObject* parent)
    : QObject(parent), m_notifications(notifications) {
    s_shared = this;
    requestPermission();
}

NotificationService::~NotificationService() {
    if (s_shared == this) {
        s_shared = nullptr;
    }
}

NotificationService& NotificationService::shared() {
    Q_ASSERT(s_shared);
    return *s_shared;
}

void NotificationService::requestPermission() {
    m_notifications.requestAuthorization(
        [self = QPointer(this)](UserNotifications::Authorization authorization) {
            if (!self) {
                return;
            }
            self->m_authorized = authorization.granted;
            if (authorization.error) {
                qCCritical(lcNotifications, "Permission error: %s",
                           qUtf8Printable(*authorization.error));
            }
        });
}

void NotificationService::send(const QString& id, const QString& title, const QString& body,
                               const QString& categoryID, NotificationSound sound) {
    if (!m_authorized) {
        return;
    }
    m_notifications.add({.identifier = u"quorvin-"_s + id,
                         .title = title,
                         .body = body,
                         .category = categoryID,
                         .sound = sound},
                        [self = QPointer(this), id](const std::optional<QString>& error) {
                            if (self && error) {
                                qCCritical(lcNotifications, "Failed to deliver '%s': %s",
                                           qUtf8Printable(id), qUtf8Printable(*error));
                            }
                        });
}

void NotificationService::notifyTranscriptionComplete(const QString& text) {
    send(u"transcription-complete"_s, u"Transcription Complete"_s,
         text::elided(text, maxTextLength), u"transfer.complete"_s, NotificationSound::standard);
}

void NotificationService::notifySendSuccess(const QString& agent) {
    send(u"send-success"_s, u"Sent to "_s + agent, u"Text delivered successfully"_s,
         u"transfer.complete"_s, NotificationSound::standard);
}

} // namespace quorvin
