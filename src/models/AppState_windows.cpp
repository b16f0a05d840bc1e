#include "models/AppState.h"

#include <algorithm>

namespace quorvin {

std::shared_ptr<AppWindow> AppState::findMainWindow() {
    if (auto remembered = m_mainWindow.lock()) {
        return remembered;
    }
    const auto windows = m_platform.windowSystem.windows();
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [](const auto& window) { return !window->isPanel(); });
    return found == windows.end() ? nullptr : *found;
}

void AppState::applyAlwaysOnTop() {
    if (const auto window = findMainWindow()) {
        window->setLevel(alwaysOnTop() ? AppWindow::Level::floating : AppWindow::Level::normal);
    }
}

void AppState::applyWindowOpacity() {
    if (const auto window = findMainWindow()) {
        window->setAlphaValue(windowOpacity());
    }
}

} // namespace quorvin
