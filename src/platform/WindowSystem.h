#pragma once

#include <QRectF>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace quorvin {

/// A window of this program. A panel floats beside the application and is never its main window.
/// Main thread only.
class AppWindow {
public:
    enum class Level { normal = 0, floating = 3 };

    AppWindow() = default;
    AppWindow(const AppWindow&) = delete;
    AppWindow& operator=(const AppWindow&) = delete;
    virtual ~AppWindow() = default;

    [[nodiscard]] virtual bool isPanel() const = 0;
    [[nodiscard]] virtual bool isVisible() const = 0;
    [[nodiscard]] virtual QString title() const = 0;

    virtual void setLevel(Level level) = 0;
    /// 0 is transparent, 1 opaque; without effect where the desktop doesn't composite.
    virtual void setAlphaValue(double alpha) = 0;
    virtual void orderOut() = 0;
    virtual void makeKeyAndOrderFront() = 0;
};

/// One screen of the desktop, in the desktop's coordinates: points from its top left corner.
struct Screen {
    QRectF frame;        ///< all of it
    QRectF visibleFrame; ///< what docks and bars leave free
};

/// The windows of this program. Main thread only.
class WindowSystem {
public:
    /// Ends the notices when it goes.
    using Subscription = std::shared_ptr<void>;

    WindowSystem() = default;
    WindowSystem(const WindowSystem&) = delete;
    WindowSystem& operator=(const WindowSystem&) = delete;
    virtual ~WindowSystem() = default;

    /// In the order of their making. A window keeps its object for as long as it lives.
    [[nodiscard]] virtual std::vector<std::shared_ptr<AppWindow>> windows() = 0;
    /// The one that has the keyboard focus; empty when another program has it.
    [[nodiscard]] virtual std::shared_ptr<AppWindow> keyWindow() = 0;
    /// `handler` is called each time a window of this program has taken the keyboard focus.
    [[nodiscard]] virtual Subscription
    onWindowBecameKey(std::function<void(std::shared_ptr<AppWindow>)> handler) = 0;
    /// The main screen first; empty without a display.
    [[nodiscard]] virtual std::vector<Screen> screens() = 0;
    /// Takes the keyboard focus from other programs.
    virtual void activateIgnoringOtherApps() = 0;
};

} // namespace quorvin
