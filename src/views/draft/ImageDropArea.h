#pragma once

#include <QQuickItem>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// Where files of images can be dropped:
///
///     ImageDropArea { anchors.fill: parent; onDropped: image => appState.attachImages([image]) }
class ImageDropArea : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// While something is held over it that may hold images.
    Q_PROPERTY(bool isTargeted READ isTargeted NOTIFY isTargetedChanged)

public:
    explicit ImageDropArea(QQuickItem* parent = nullptr);

    [[nodiscard]] bool isTargeted() const { return m_isTargeted; }

Q_SIGNALS:
    void isTargetedChanged();
    /// Once for each, in the order of the drag.
    void dropped(const QUrl& image);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void setIsTargeted(bool is);

    bool m_isTargeted = false;
};

} // namespace quorvin
