#include "platform/qt/QtWindowSystem.h"

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QWindow>

namespace quorvin {

namespace {

class QtAppWindow final : public AppWindow {
public:
    explicit QtAppWindow(QWindow* window) : m_window(window) {}

    [[nodiscard]] bool isPanel() const override {
        return m_window && (m_window->flags() & Qt::WindowType_Mask) == Qt::Tool;
    }
    [[nodiscard]] bool isVisible() const override { return m_window && m_window->isVisible(); }
    [[nodiscard]] QString title() const override {
        return m_window ? m_window->title() : QString();
    }
    void setLevel(Level level) override {
        if (m_window) {
            m_window->setFlag(Qt::WindowStaysOnTopHint, level == Level::floating);
        }
    }
    void setAlphaValue(double alpha) override {
        if (m_window) {
            m_window->setOpacity(alpha);
        }
    }
    void orderOut() override {
        if (m_window) {
            m_window->hide();
        }
    }
    void makeKeyAndOrderFront() override {
        if (m_window) {
            m_window->show();
            m_window->raise();
            m_window->requestActivate();
        }
    }

private:
    QPointer<QWindow> m_window; // somebody may keep this object longer than the window lives
};

/// Not a menu, a tooltip or the icon in the tray. Panels, too, pass the window manager by.
bool isApplicationWindow(const QWindow& window) {
    const auto type = window.flags() & Qt::WindowType_Mask;
    return type == Qt::Tool || ((type == Qt::Window || type == Qt::Dialog) &&
                                !window.flags().testFlag(Qt::BypassWindowManagerHint));
}

} // namespace

QtWindowSystem::QtWindowSystem() {
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &QtWindowSystem::focusMoved);
}

std::vector<std::shared_ptr<AppWindow>> QtWindowSystem::windows() {
    std::vector<std::shared_ptr<AppWindow>> result;
    const auto topLevel = QGuiApplication::topLevelWindows();
    for (QWindow* window : topLevel) {
        if (isApplicationWindow(*window)) {
            result.push_back(wrapped(window));
        }
    }
    return result;
}

std::shared_ptr<AppWindow> QtWindowSystem::keyWindow() {
    QWindow* const window = QGuiApplication::focusWindow();
    return window ? wrapped(window) : nullptr;
}

WindowSystem::Subscription
QtWindowSystem::onWindowBecameKey(std::function<void(std::shared_ptr<AppWindow>)> handler) {
    auto subscription = std::make_shared<Handler>(std::move(handler));
    m_handlers.push_back(subscription);
    return subscription;
}

std::vector<Screen> QtWindowSystem::screens() {
    std::vector<Screen> result;
    const auto screens = QGuiApplication::screens(); // the primary one is the first
    for (const QScreen* screen : screens) {
        result.push_back(
            {.frame = screen->geometry(), .visibleFrame = screen->availableGeometry()});
    }
    return result;
}

void QtWindowSystem::activateIgnoringOtherApps() {
    if (const auto window = QGuiApplication::focusWindow()) {
        window->requestActivate();
        return;
    }
    for (const auto& window : windows()) {
        if (window->isVisible() && !window->isPanel()) {
            window->makeKeyAndOrderFront();
            return;
        }
    }
}

std::shared_ptr<AppWindow> QtWindowSystem::wrapped(QWindow* window) {
    auto& object = m_windows[window];
    if (!object) {
        object = std::make_shared<QtAppWindow>(window);
        connect(window, &QObject::destroyed, this, [this, window] { m_windows.remove(window); });
    }
    return object;
}

void QtWindowSystem::focusMoved(QWindow* window) {
    m_handlers.remove_if([](const auto& handler) { return handler.expired(); });
    if (!window) {
        return;
    }
    const auto key = wrapped(window);
    const auto handlers = m_handlers; // a handler may subscribe or unsubscribe
    for (const auto& weak : handlers) {
        if (const auto handler = weak.lock()) {
            (*handler)(key);
        }
    }
}

} // namespace quorvin
