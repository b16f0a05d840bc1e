#pragma once

#include "models/CompactPanel.h"
#include "platform/WindowSystem.h"
#include "support/Task.h"

#include <QList>
#include <QPointer>
#include <QUrl>

#include <memory>
#include <optional>

namespace quorvin {

class AppState;
class Scheduler;
class UserDefaults;

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
