#pragma once

#include "platform/WindowSystem.h"

#include <algorithm>

namespace quorvin::testing {

class FakeWindow final : public AppWindow {
public:
    explicit FakeWindow(QString windowTitle, bool panel = false)
        : m_title(std::move(windowTitle)), m_panel(panel) {}

    [[nodiscard]] bool isPanel() const override { return m_panel; }
    [[nodiscard]] bool isVisible() const override { return visible; }
    [[nodiscard]] QString title() const override { return m_title; }
    void setLevel(Level newLevel) override { level = newLevel; }
    void setAlphaValue(double newAlpha) override { alpha = newAlpha; }
    void orderOut() override { visible = false; }
    void makeKeyAndOrderFront() override { visible = true; }

    bool visible = true;
    Level level = Level::normal;
    double alpha = 1.0;

private:
    QString m_title;
    bool m_panel;
};

/// Windows in memory; `becomeKey` plays the user's click.
class FakeWindowSystem final : public WindowSystem {
public:
    std::shared_ptr<FakeWindow> add(const QString& title, bool panel = false) {
        auto window = std::make_shared<FakeWindow>(title, panel);
        m_windows.push_back(window);
        return window;
    }
    void becomeKey(const std::shared_ptr<FakeWindow>& window) {
        m_key = window;
        for (const auto& weak : std::vector(m_handlers)) {
            if (const auto handler = weak.lock()) {
                (*handler)(window);
            }
        }
    }
    [[nodiscard]] std::size_t subscriptions() const {
        return static_cast<std::size_t>(
            std::count_if(m_handlers.begin(), m_handlers.end(),
                          [](const auto& handler) { return !handler.expired(); }));
    }
    int activations = 0;
    std::vector<Screen> desktop{{.frame = {0, 0, 1440, 900}, .visibleFrame = {0, 25, 1440, 795}}};

    [[nodiscard]] std::vector<std::shared_ptr<AppWindow>> windows() override {
        return {m_windows.begin(), m_windows.end()};
    }
    [[nodiscard]] std::shared_ptr<AppWindow> keyWindow() override { return m_key; }
    [[nodiscard]] Subscription
    onWindowBecameKey(std::function<void(std::shared_ptr<AppWindow>)> handler) override {
        auto subscription =
            std::make_shared<std::function<void(std::shared_ptr<AppWindow>)>>(std::move(handler));
        m_handlers.push_back(subscription);
        return subscription;
    }
    [[nodiscard]] std::vector<Screen> screens() override { return desktop; }
    void activateIgnoringOtherApps() override { ++activations; }

private:
    std::vector<std::shared_ptr<FakeWindow>> m_windows;
    std::shared_ptr<FakeWindow> m_key;
    std::vector<std::weak_ptr<std::function<void(std::shared_ptr<AppWindow>)>>> m_handlers;
};

} // namespace quorvin::testing
