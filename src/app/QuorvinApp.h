#pragma once

#include "app/AppDelegate.h"
#include "app/SettingsWindowController.h"
#include "app/StatusBarController.h"
#include "models/AppState.h"

#include <QObject>
#include <QQmlApplicationEngine>

namespace quorvin {

/// The program on its platform: the state, its one window scene, and what the desktop sees of it.
/// Needs the shared services. Main thread only.
class QuorvinApp final : public QObject {
    Q_OBJECT
public:
    explicit QuorvinApp(const Platform& platform);
    ~QuorvinApp() override;

    /// Shows the window. False when that isn't possible.
    [[nodiscard]] bool run();
    /// What a further start of the program does to this one.
    void handleReopen();

private:
    void contentAppeared();
    void guardActiveWindow();
    Q_SLOT void openSettings();

    const Platform m_platform;
    AppState m_appState;
    QQmlApplicationEngine m_engine;
    SettingsWindowController m_settingsWindow;
    StatusBarController m_statusBar;
    AppDelegate m_appDelegate;
};

} // namespace quorvin
