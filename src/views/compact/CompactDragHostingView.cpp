#include "views/compact/CompactDragHostingView.h"

#include "models/AppState.h"
#include "models/CompactPanel.h"

#include <QCursor>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QStyleHints>

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

/// Every pixel that a rectangle with round corners touches.
QRegion roundedRegion(QSize size, double radius) {
    const int corner = static_cast<int>(std::ceil(radius));
    QRegion region(0, corner, size.width(), size.height() - 2 * corner);
    for (int row = 0; row < corner; ++row) {
        const double fromCentre = radius - (row + 1); // of the row's edge that reaches farthest
        const double reach = std::sqrt(radius * radius - fromCentre * fromCentre);
        const int inset = static_cast<int>(std::floor(radius - reach));
        const int width = size.width() - 2 * inset;
        region += QRect(inset, row, width, 1);
        region += QRect(inset, size.height() - 1 - row, width, 1);
    }
    return region;
}

/// The files of a drag, in its order; whatever else it carries is left out.
QList<QUrl> fileURLs(const QMimeData& data) {
    QList<QUrl> files = data.urls();
    files.removeIf([](const QUrl& url) { return !url.isLocalFile(); });
    return files;
}

} // namespace

CompactDragHostingView::CompactDragHostingView(QQmlEngine& engine, AppState& appState)
    : QQuickView(&engine, nullptr) {
    setTitle(u"Quorvin"_s);
    // Past the window manager: none of them can give it the focus then, whatever their rules, it is
    // on every desktop and in no task bar, and full-screen windows don't cover it.
    setFlags(Qt::Tool | Qt::BypassWindowManagerHint | Qt::FramelessWindowHint |
             Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus);
    setColor(Qt::transparent);
    resize(QSizeF(compactW, compactTotalH).toSize());
    // Without a compositor transparent corners would be black, so there are none.
    setMask(roundedRegion(size(), compactCornerR));
    setResizeMode(SizeRootObjectToView);
    setInitialProperties({{u"appState"_s, QVariant::fromValue(&appState)}});
    setSource(QUrl(u"qrc:/qt/qml/Quorvin/compact/CompactPanel.qml"_s));
}

bool CompactDragHostingView::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
        draggingUpdated(*static_cast<QDragMoveEvent*>(event));
        return true;
    case QEvent::Drop:
        performDragOperation(*static_cast<QDropEvent*>(event));
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease: {
        // What stands in the window first: a window's own handlers are called before that.
        const bool isHandled = QQuickView::event(event);
        followMouse(*static_cast<QMouseEvent*>(event));
        return isHandled;
    }
    default:
        return QQuickView::event(event);
    }
}

void CompactDragHostingView::draggingUpdated(QDragMoveEvent& drag) const {
    if (fileURLs(*drag.mimeData()).isEmpty()) {
        drag.ignore();
        return;
    }
    drag.setDropAction(Qt::CopyAction);
    drag.accept();
}

void CompactDragHostingView::performDragOperation(QDropEvent& drop) {
    const QList<QUrl> files = fileURLs(*drop.mimeData());
    if (files.isEmpty()) {
        drop.ignore();
        return;
    }
    drop.setDropAction(Qt::CopyAction);
    drop.accept();
    if (onDropped) {
        onDropped(files);
    }
}

void CompactDragHostingView::moveEvent(QMoveEvent* event) {
    QQuickView::moveEvent(event);
    if (onMoved) {
        onMoved();
    }
}

void CompactDragHostingView::followMouse(const QMouseEvent& mouse) {
    if (mouse.type() == QEvent::MouseButtonPress) {
        m_isDragged = false;
        m_grip.reset();
        // A control that has taken the press keeps it; a tap on the background waits for its end.
        if (mouse.button() == Qt::LeftButton && !mouse.exclusiveGrabber(mouse.points().first())) {
            m_grip = mouse.position();
        }
    } else if (!mouse.buttons().testFlag(Qt::LeftButton)) {
        m_grip.reset();
    }
    if (!m_grip) {
        return;
    }
    const QPointF way = mouse.position() - *m_grip;
    const int tolerance = QGuiApplication::styleHints()->startDragDistance();
    // Farther than that nothing is a tap.
    m_isDragged = m_isDragged || std::max(std::abs(way.x()), std::abs(way.y())) > tolerance;
    if (m_isDragged) {
        // Not by the event's place on the screen, which Qt reckons from that of the moving window.
        setPosition(QCursor::pos() - m_grip->toPoint());
    }
}

} // namespace quorvin
