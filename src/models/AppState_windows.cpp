#include "models/AppState.h"
#include "platform/Scheduler.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace quorvin {

namespace {

/// When the toolkit has had time to bring back what was hidden.
constexpr auto sweepDelay = 250ms;

/// The settings may be opened in compact mode; they are known by their title.
bool mayStayInCompactMode(const AppWindow& window) {
    return window.isPanel() || window.title() == u"Settings";
}

} // namespace

void AppState::switchToCompactMode() {
    m_didUserTriggerWindowSwitch = true;
    if (m_mainWindow.expired()) {
        // The settings in front would otherwise come back as the main window.
        const auto key = m_platform.windowSystem.keyWindow();
        m_mainWindow = key && !mayStayInCompactMode(*key) ? key : mainWindow();
    }
    m_isCompactMode = true;
    m_activeWindow = ActiveWindow::compact;
    m_compactWindowController.show(*this);
    // Without exception here: open settings go as well.
    for (const auto& window : m_platform.windowSystem.windows()) {
        if (!window->isPanel()) {
            window->orderOut();
        }
    }
    guardAgainstWindows();
    // Not cancelled when the user switches back before, on purpose.
    m_platform.scheduler.postDelayed(sweepDelay, [self = QPointer(this)] {
        if (self) {
            self->sweepWindows();
        }
    });
}

void AppState::guardAgainstWindows() {
    if (m_windowGuard) {
        return;
    }
    m_windowGuard =
        m_platform.windowSystem.onWindowBecameKey([](const std::shared_ptr<AppWindow>& window) {
            if (!mayStayInCompactMode(*window)) {
                window->orderOut();
            }
        });
}

void AppState::sweepWindows() {
    for (const auto& window : m_platform.windowSystem.windows()) {
        if (window->isVisible() && !mayStayInCompactMode(*window)) {
            window->orderOut();
        }
    }
}

void AppState::switchToMainWindow(bool stealFocus) {
    m_didUserTriggerWindowSwitch = true;
    m_isCompactMode = false;
    m_activeWindow = ActiveWindow::main;
    m_windowGuard.reset();
    m_compactWindowController.close();
    if (const auto window = mainWindow()) {
        window->makeKeyAndOrderFront();
    }
    if (stealFocus) {
        m_platform.windowSystem.activateIgnoringOtherApps();
    }
}

std::shared_ptr<AppWindow> AppState::mainWindow() {
    if (auto remembered = m_mainWindow.lock()) {
        return remembered;
    }
    const auto windows = m_platform.windowSystem.windows();
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [](const auto& window) { return !window->isPanel(); });
    return found == windows.end() ? nullptr : *found;
}

void AppState::applyAlwaysOnTop() {
    if (const auto window = mainWindow()) {
        window->setLevel(alwaysOnTop() ? AppWindow::Level::floating : AppWindow::Level::normal);
    }
}

void AppState::applyWindowOpacity() {
    if (const auto window = mainWindow()) {
        window->setAlphaValue(windowOpacity());
    }
}

} // namespace quorvin
