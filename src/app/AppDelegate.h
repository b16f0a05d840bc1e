#pragma once

#include "app/HotKeys.h"
#include "models/AppState.h"

#include <QPointer>

#include <functional>

namespace quorvin {

/// What the desktop asks of the program: its hot keys, its menu, its icon. Every action runs as a
/// task of its own on the main thread. Main thread only.
class AppDelegate {
public:
    AppDelegate(const Platform& platform, AppState& appState, std::function<void()> openSettings);

    /// Begins to listen for hot keys; again without effect.
    void installMonitors();

    void showMainWindow();
    void openSettings();
    void toggleCompactMode();
    /// Whether a further start of the program should bring its window forward: not while the panel
    /// is in use.
    [[nodiscard]] bool applicationShouldHandleReopen() const;
    void applicationWillTerminate();

private:
    void perform(HotKeyAction action);
    /// Runs `action` as a task, if the state still lives by then.
    void start(std::function<void(AppState&)> action);

    WindowSystem& m_windowSystem;
    Scheduler& m_scheduler;
    KeyMonitor& m_keyMonitor;
    QPointer<AppState> m_appState;
    std::function<void()> m_openSettings;
    KeyMonitor::Subscription m_globalMonitor;
    KeyMonitor::Subscription m_localMonitor;
};

} // namespace quorvin
