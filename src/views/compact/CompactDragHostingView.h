#pragma once

#include <QPointF>
#include <QQuickView>
#include <QUrl>

#include <functional>
#include <optional>

class QDragMoveEvent;
class QDropEvent;

namespace quorvin {

class AppState;

/// The panel's window with `CompactView` in it: takes dropped files, and can be dragged by its
/// background. Never has the keyboard focus.
class CompactDragHostingView : public QQuickView {
    Q_OBJECT
public:
    CompactDragHostingView(QQmlEngine& engine, AppState& appState);

    /// Called after each move, whoever moved it.
    std::function<void()> onMoved;
    /// Called with the files of a drop, at least one.
    std::function<void(const QList<QUrl>& files)> onDropped;

protected:
    bool event(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

private:
    void followMouse(const QMouseEvent& mouse);
    void draggingUpdated(QDragMoveEvent& drag) const;
    void performDragOperation(QDropEvent& drop);

    std::optional<QPointF> m_grip; ///< where the background was pressed, in the window
    bool m_isDragged = false;
};

} // namespace quorvin
