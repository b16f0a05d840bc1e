#pragma once

#include <QPointF>
#include <QQuickView>
#include <QRegion>
#include <QUrl>

#include <functional>
#include <optional>

class QDragMoveEvent;
class QDropEvent;
class QMimeData;

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

    /// The files of a drag, in its order; whatever else it carries is left out.
    [[nodiscard]] static QList<QUrl> fileURLs(const QMimeData& data);
    /// Every pixel that a rectangle with round corners touches.
    [[nodiscard]] static QRegion roundedRegion(QSize size, double radius);

protected:
    bool event(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void draggingUpdated(QDragMoveEvent& drag) const;
    void performDragOperation(QDropEvent& drop);

    std::optional<QPointF> m_grip; ///< where the background was pressed, in the window
    bool m_isDragged = false;
};

} // namespace quorvin
