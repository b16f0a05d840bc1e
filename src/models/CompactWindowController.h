#pragma once

#include "platform/WindowSystem.h"
#include "support/Task.h"

#include <QList>
#include <QPointer>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

namespace quorvin {

class AppState;
class Scheduler;
class UserDefaults;

// The panel's layout, in points.
inline constexpr double compactW = 360.0;
inline constexpr double compactWaveH = 48.0;
inline constexpr double compactStatusH = 24.0;
inline constexpr double compactTotalH = compactWaveH + compactStatusH;
inline constexpr double compactCornerR = 22.0;

/// The window of compact mode, as it stands on the screen: above all others, on every desktop, and
/// never with the keyboard focus. Gone from the screen when it is destroyed. Main thread only.
class CompactPanel {
public:
    CompactPanel() = default;
    CompactPanel(const CompactPanel&) = delete;
    CompactPanel& operator=(const CompactPanel&) = delete;
    virtual ~CompactPanel() = default;

    /// Shows it on top, without the focus.
    virtual void orderFront() = 0;
    /// The top left corner on the desktop.
    [[nodiscard]] virtual QPointF origin() const = 0;
    virtual void setOrigin(QPointF origin) = 0;

    /// Called each time it has moved, whoever moved it.
    std::function<void()> onMoved;
    /// Called with what was dropped on it, at least one address of a file, in the drag's order.
    std::function<void(const QList<QUrl>& files)> onDropped;
};

/// Makes a panel that shows the state, not yet on the screen.
using CompactPanelFactory = std::function<std::unique_ptr<CompactPanel>(AppState& appState)>;

/// The files of a drop, as the panel takes them.
struct CompactDrop {
    QList<QUrl> images;
    QList<QUrl> files;

    /// Apart by the extension, in upper or lower case; each group in the order of the drag.
    [[nodiscard]] static CompactDrop split(const QList<QUrl>& urls);
};

/// Makes, places and closes the panel of compact mode and remembers where the user put it.
/// Main thread only.
class CompactWindowController {
public:
    CompactWindowController(WindowSystem& windowSystem, UserDefaults& userDefaults,
                            Scheduler& scheduler, const QString& keyPosX, const QString& keyPosY);
    ~CompactWindowController();
    CompactWindowController(const CompactWindowController&) = delete;
    CompactWindowController& operator=(const CompactWindowController&) = delete;

    /// How panels are made. Without it `show` shows nothing.
    void setPanelFactory(CompactPanelFactory factory) { m_makePanel = std::move(factory); }

    /// Shows the panel where it was last, if that is on a screen, and else at the bottom of the
    /// main one. A panel that is shown already comes to the top.
    void show(AppState& appState);
    /// Remembers where the panel is and closes it.
    void close();

private:
    [[nodiscard]] bool isOnScreen(double x, double y) const;
    [[nodiscard]] std::optional<QPointF> storedOrigin() const;
    [[nodiscard]] QPointF defaultOrigin() const;
    void storeOrigin();
    void moved();
    void dropped(const QList<QUrl>& urls);

    WindowSystem& m_windowSystem;
    UserDefaults& m_userDefaults;
    Scheduler& m_scheduler;
    const QString m_keyPosX;
    const QString m_keyPosY;
    CompactPanelFactory m_makePanel;
    std::unique_ptr<CompactPanel> m_panel;
    QPointer<AppState> m_appState;
    CancellableTask m_storing;
    QPointF m_placedOrigin;
    /// Until the panel turns up elsewhere than where it was placed.
    bool m_isProgrammaticMove = false;
};

} // namespace quorvin
