#pragma once

#include "support/Task.h"

#include <QString>

#include <functional>
#include <optional>

namespace quorvin {

enum class NotificationSound { standard, critical };

/// One banner. A later one with the same identifier replaces it.
struct NotificationRequest {
    QString identifier;
    QString title;
    QString body;
    QString category;
    NotificationSound sound = NotificationSound::standard;
};

/// The system's notification centre. Main thread only; the callbacks come there as well, at any
/// time, also before the call returns.
class UserNotifications {
public:
    struct Authorization {
        bool granted = false;
        std::optional<QString> error;
    };

    UserNotifications() = default;
    UserNotifications(const UserNotifications&) = delete;
    UserNotifications& operator=(const UserNotifications&) = delete;
    virtual ~UserNotifications() = default;

    virtual void requestAuthorization(std::function<void(Authorization)> completion) = 0;
    /// Shows the banner at once; `completion` gets the reason when that failed.
    virtual void add(const NotificationRequest& request,
                     std::function<void(std::optional<QString> error)> completion) = 0;
};

} // namespace quorvin
