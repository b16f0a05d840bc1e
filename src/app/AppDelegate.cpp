#include "app/AppDelegate.h"

#include "platform/Scheduler.h"

#include <utility>

namespace quorvin {

AppDelegate::AppDelegate(const Platform& platform, AppState& appState,
                         std::function<void()> openSettings)
    : m_windowSystem(platform.windowSystem)
    , m_scheduler(platform.scheduler)
    , m_keyMonitor(platform.keyMonitor)
    , m_appState(&appState)
    , m_openSettings(std::move(openSettings)) {}

void AppDelegate::installMonitors() {
    const auto actionFor = [this](const KeyDown& key, KeyOrigin origin) {
        return m_appState ? hotKeyAction(key, origin, m_appState->isCompactMode(),
                                         m_appState->isRecording())
                          : std::nullopt;
    };
    if (!m_globalMonitor) {
        m_globalMonitor = m_keyMonitor.addGlobalMonitor([this, actionFor](const KeyDown& key) {
            if (const auto action = actionFor(key, KeyOrigin::otherProgram)) {
                perform(*action);
            }
        });
    }
    if (!m_localMonitor) {
        m_localMonitor = m_keyMonitor.addLocalMonitor([this, actionFor](const KeyDown& key) {
            const auto action = actionFor(key, KeyOrigin::thisProgram);
            if (action) {
                perform(*action);
            }
            return action.has_value();
        });
    }
}

void AppDelegate::perform(HotKeyAction action) {
    switch (action) {
    case HotKeyAction::toggleCompactMode:
        toggleCompactMode();
        break;
    case HotKeyAction::compactSend:
        start([](AppState& appState) { appState.compactSendCommand(); });
        break;
    case HotKeyAction::stopRecording:
        start([](AppState& appState) { appState.stopRecording(); });
        break;
    case HotKeyAction::cancelRecording:
        start([](AppState& appState) { appState.cancelRecording(); });
        break;
    }
}

void AppDelegate::start(std::function<void(AppState&)> action) {
    m_scheduler.post([appState = m_appState, action = std::move(action)] {
        if (appState) {
            action(*appState);
        }
    });
}

void AppDelegate::toggleCompactMode() {
    start([](AppState& appState) {
        if (appState.isCompactMode()) {
            appState.switchToMainWindow(true);
        } else {
            appState.switchToCompactMode();
        }
    });
}

void AppDelegate::showMainWindow() {
    start([&windowSystem = m_windowSystem](AppState& appState) {
        if (appState.isCompactMode()) {
            appState.switchToMainWindow(true);
            return;
        }
        if (const auto window = appState.mainWindow()) {
            window->makeKeyAndOrderFront();
        }
        windowSystem.activateIgnoringOtherApps();
    });
}

void AppDelegate::openSettings() {
    start([open = m_openSettings](AppState&) { open(); });
}

bool AppDelegate::applicationShouldHandleReopen() const {
    return !m_appState || !m_appState->isCompactMode();
}

void AppDelegate::applicationWillTerminate() {
    m_globalMonitor.reset();
    m_localMonitor.reset();
}

} // namespace quorvin
