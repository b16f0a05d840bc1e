#pragma once

#include "platform/UserNotifications.h"

#include <map>
#include <utility>
#include <vector>

namespace quorvin::testing {

/// A notification centre without a screen. What a test sets beforehand is answered within the call;
/// what it leaves open is answered when the test says so.
class FakeUserNotifications final : public UserNotifications {
public:
    void requestAuthorization(std::function<void(Authorization)> completion) override {
        ++authorizationRequests;
        if (authorization) {
            completion(*authorization);
        } else {
            m_questions.push_back(std::move(completion));
        }
    }

    void add(const NotificationRequest& request,
             std::function<void(std::optional<QString> error)> completion) override {
        requests.push_back(request);
        if (!deliveryError) {
            shown[request.identifier] = request;
        }
        if (holdsDeliveries) {
            m_deliveries.push_back(std::move(completion));
        } else {
            completion(deliveryError);
        }
    }

    /// The user answers what was asked while `authorization` was empty.
    void answer(const Authorization& given) {
        for (const auto& completion : std::exchange(m_questions, {})) {
            completion(given);
        }
    }

    /// The system tells about what was added while `holdsDeliveries` was set.
    void finishDeliveries() {
        for (const auto& completion : std::exchange(m_deliveries, {})) {
            completion(deliveryError);
        }
    }

    /// Empty while the user has not decided yet.
    std::optional<Authorization> authorization = Authorization{.granted = true, .error = {}};
    int authorizationRequests = 0;

    /// Why nothing can be shown.
    std::optional<QString> deliveryError;
    bool holdsDeliveries = false;

    /// All that was added, in order, and what of it is on the screen, by identifier.
    std::vector<NotificationRequest> requests;
    std::map<QString, NotificationRequest> shown;

private:
    std::vector<std::function<void(Authorization)>> m_questions;
    std::vector<std::function<void(std::optional<QString> error)>> m_deliveries;
};

} // namespace quorvin::testing
