#pragma once

#include "support/Task.h"

#include <QSizeF>

#include <memory>
#include <optional>

class QQmlEngine;
class QQuickWindow;

namespace quorvin {

class AppState;
class Scheduler;
class UserDefaults;
class WindowSystem;

/// The content size of a settings window, in points: what was stored if it is large enough, else by
/// the height of the main screen's visible frame, else a fixed one.
[[nodiscard]] QSizeF settingsWindowSize(std::optional<double> storedWidth,
                                        std::optional<double> storedHeight,
                                        std::optional<double> visibleHeight);

/// Opens the settings window. Main thread only.
class SettingsWindowController {
public:
    SettingsWindowController(QQmlEngine& engine, WindowSystem& windowSystem,
                             UserDefaults& userDefaults, Scheduler& scheduler);
    ~SettingsWindowController();
    SettingsWindowController(const SettingsWindowController&) = delete;
    SettingsWindowController& operator=(const SettingsWindowController&) = delete;

    /// A window that is on the screen comes to the front; otherwise a new one is made.
    void open(AppState& appState);

private:
    void makeWindow(AppState& appState);
    void storeSize();
    void bringToFront();

    QQmlEngine& m_engine;
    WindowSystem& m_windowSystem;
    UserDefaults& m_userDefaults;
    Scheduler& m_scheduler;
    std::unique_ptr<QQuickWindow> m_window;
    CancellableTask m_storing;
};

} // namespace quorvin
