#include "views/draft/ImageDropArea.h"

#include "views/draft/DroppedImages.h"

#include <QDropEvent>

namespace quorvin {

namespace {

void acceptAsCopy(QDropEvent& event) {
    // The files stay where they are, whatever the source would like.
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

} // namespace

ImageDropArea::ImageDropArea(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemAcceptsDrops);
}

void ImageDropArea::dragEnterEvent(QDragEnterEvent* event) {
    if (!droppedImages::isOffered(*event->mimeData())) {
        event->ignore();
        return;
    }
    acceptAsCopy(*event);
    setIsTargeted(true);
}

void ImageDropArea::dragMoveEvent(QDragMoveEvent* event) {
    acceptAsCopy(*event);
}

void ImageDropArea::dragLeaveEvent(QDragLeaveEvent* /*event*/) {
    setIsTargeted(false);
}

void ImageDropArea::dropEvent(QDropEvent* event) {
    setIsTargeted(false);
    acceptAsCopy(*event);
    const QList<QUrl> images = droppedImages::in(*event->mimeData());
    for (const QUrl& image : images) {
        Q_EMIT dropped(image);
    }
}

void ImageDropArea::setIsTargeted(bool is) {
    if (is != m_isTargeted) {
        m_isTargeted = is;
        Q_EMIT isTargetedChanged();
    }
}

} // namespace quorvin
