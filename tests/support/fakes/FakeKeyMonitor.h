#pragma once

#include "platform/KeyMonitor.h"

namespace quorvin::testing {

/// A keyboard that a test presses. It has one monitor of each kind.
class FakeKeyMonitor final : public KeyMonitor {
public:
    [[nodiscard]] Subscription
    addGlobalMonitor(std::function<void(const KeyDown&)> handler) override {
        auto subscription =
            std::make_shared<std::function<void(const KeyDown&)>>(std::move(handler));
        m_global = subscription;
        ++monitorsMade;
        return subscription;
    }
    [[nodiscard]] Subscription
    addLocalMonitor(std::function<bool(const KeyDown&)> handler) override {
        auto subscription =
            std::make_shared<std::function<bool(const KeyDown&)>>(std::move(handler));
        m_local = subscription;
        ++monitorsMade;
        return subscription;
    }

    void pressElsewhere(const KeyDown& key) {
        if (const auto handler = m_global.lock()) {
            (*handler)(key);
        }
    }
    /// Whether the key was consumed.
    bool pressHere(const KeyDown& key) {
        const auto handler = m_local.lock();
        return handler && (*handler)(key);
    }
    [[nodiscard]] bool isWatched() const { return !m_global.expired() || !m_local.expired(); }

    int monitorsMade = 0;

private:
    std::weak_ptr<std::function<void(const KeyDown&)>> m_global;
    std::weak_ptr<std::function<bool(const KeyDown&)>> m_local;
};

} // namespace quorvin::testing
