#include "app/QuorvinApp.h"

#include "platform/Scheduler.h"
#include "views/compact/QuickCompactPanel.h"

#include <QCoreApplication>
#include <QEvent>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace quorvin {

namespace {

/// When a switch back from compact mode should have left a window with the focus.
constexpr auto windowGuardDelay = 100ms;

} // namespace

QuorvinApp::QuorvinApp(const Platform& platform)
    : m_platform(platform)
    , m_appState(platform)
    , m_settingsWindow(m_engine, platform.windowSystem, platform.userDefaults, platform.scheduler)
    , m_statusBar(platform.statusItem)
    , m_appDelegate(platform, m_appState, [this] { openSettings(); }) {
    m_appState.compactWindowController().setPanelFactory(quickCompactPanels(m_engine));
    connect(&m_appState, &AppState::activeWindowChanged, this, &QuorvinApp::guardActiveWindow);
}

QuorvinApp::~QuorvinApp() {
    m_appDelegate.applicationWillTerminate();
    // Before the engine that its content lives in; no event loop will do it.
    m_appState.compactWindowController().close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool QuorvinApp::run() {
    m_engine.addImportPath(u"qrc:/qt/qml"_s);
    m_engine.setInitialProperties({{u"appState"_s, QVariant::fromValue(&m_appState)}});
    m_engine.load(u"qrc:/qt/qml/Quorvin/MainWindow.qml"_s);
    if (m_engine.rootObjects().isEmpty()) {
        return false;
    }
    contentAppeared();
    return true;
}

void QuorvinApp::contentAppeared() {
    m_statusBar.setup(m_appDelegate, [] { QCoreApplication::quit(); });
    m_appDelegate.installMonitors();
    const auto updateIcon = [this] {
        m_statusBar.updateIcon(m_appState.isRecording(), m_appState.isTranscribing());
    };
    connect(&m_appState, &AppState::isRecordingChanged, this, updateIcon);
    connect(&m_appState, &AppState::isTranscribingChanged, this, updateIcon);
    connect(m_engine.rootObjects().constFirst(), SIGNAL(settingsRequested()), this,
            SLOT(openSettings()));
}

void QuorvinApp::guardActiveWindow() {
    if (m_appState.activeWindow() != AppState::ActiveWindow::main ||
        !m_appState.didUserTriggerWindowSwitch()) {
        return;
    }
    m_platform.scheduler.postDelayed(windowGuardDelay, [appState = QPointer(&m_appState),
                                                        &windowSystem = m_platform.windowSystem] {
        if (!appState || windowSystem.keyWindow()) {
            return;
        }
        if (const auto window = appState->mainWindow()) {
            window->makeKeyAndOrderFront();
        }
        windowSystem.activateIgnoringOtherApps();
    });
}

void QuorvinApp::openSettings() {
    m_settingsWindow.open(m_appState);
}

void QuorvinApp::handleReopen() {
    if (m_appDelegate.applicationShouldHandleReopen()) {
        m_appDelegate.showMainWindow();
    }
}

} // namespace quorvin
