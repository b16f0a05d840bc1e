#pragma once

#include "platform/UserNotifications.h"

#include <QObject>

namespace quorvin {

/// Signals that reach the user outside the windows. Main thread only.
class NotificationService : public QObject {
    Q_OBJECT

public:
    /// Asks for the permission.
    explicit NotificationService(UserNotifications& notifications, QObject* parent = nullptr);
    ~NotificationService() override;

    /// The living instance. Whoever composes the program makes one before anything asks for it.
    [[nodiscard]] static NotificationService& shared();

    /// False until the user has answered the question.
    [[nodiscard]] bool authorized() const { return m_authorized; }

    void requestPermission();

    /// Posts at once, in place of an earlier notification with this id. Does nothing, now or later,
    /// when notifications are not allowed.
    void send(const QString& id, const QString& title, const QString& body,
              const QString& categoryID, NotificationSound sound);

    void notifyTranscriptionComplete(const QString& text);
    void notifySendSuccess(const QString& agent);

private:
    static inline NotificationService* s_shared = nullptr;

    UserNotifications& m_notifications;
    bool m_authorized = false;
};

} // namespace quorvin
