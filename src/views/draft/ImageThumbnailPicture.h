#pragma once

#include "views/components/DrawnItem.h"

#include <QFutureWatcher>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// The picture of an image file, which fills a square with round corners. It is read in the
/// background; until then, and if that fails, nothing is drawn.
class ImageThumbnailPicture : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QUrl url READ url WRITE setUrl NOTIFY urlChanged)
    Q_PROPERTY(QString fileName READ fileName NOTIFY urlChanged)
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY radiusChanged)
    /// Whether there is a picture.
    Q_PROPERTY(bool isLoaded READ isLoaded NOTIFY isLoadedChanged)

public:
    explicit ImageThumbnailPicture(QQuickItem* parent = nullptr);
    ~ImageThumbnailPicture() override;

    [[nodiscard]] QUrl url() const { return m_url; }
    void setUrl(const QUrl& url);
    [[nodiscard]] QString fileName() const { return m_url.fileName(); }
    [[nodiscard]] double radius() const { return m_radius; }
    void setRadius(double radius);
    [[nodiscard]] bool isLoaded() const { return !m_picture.isNull(); }

Q_SIGNALS:
    void urlChanged();
    void radiusChanged();
    void isLoadedChanged();

protected:
    [[nodiscard]] PlacedImage drawn(double devicePixelRatio) const override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void load();
    void setPicture(const QImage& picture);

    QUrl m_url;
    double m_radius = 0;
    QImage m_picture;
    int m_side = 0; ///< in pixels, that `m_picture` was read for
    QFutureWatcher<QImage> m_reading;
};

} // namespace quorvin
