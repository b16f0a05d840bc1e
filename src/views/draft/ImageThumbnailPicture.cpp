#include "views/draft/ImageThumbnailPicture.h"

#include "views/draft/ImageThumbnailGrid.h"
#include "views/draft/ImageThumbnailReader.h"

#include <QPainter>
#include <QQuickWindow>

#include <cmath>

namespace quorvin {

ImageThumbnailPicture::ImageThumbnailPicture(QQuickItem* parent) : DrawnItem(parent) {
    connect(&m_reading, &QFutureWatcher<QImage>::finished, this, [this] {
        if (!m_reading.isCanceled()) {
            setPicture(m_reading.result());
        }
    });
}

ImageThumbnailPicture::~ImageThumbnailPicture() {
    m_reading.cancel();
}

void ImageThumbnailPicture::setUrl(const QUrl& url) {
    if (assign(m_url, url)) {
        m_reading.cancel();
        m_side = 0;
        setPicture({});
        load();
        Q_EMIT urlChanged();
    }
}

void ImageThumbnailPicture::setRadius(double radius) {
    if (assign(m_radius, radius)) {
        update();
        Q_EMIT radiusChanged();
    }
}

void ImageThumbnailPicture::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) {
        load();
    }
    DrawnItem::itemChange(change, data);
}

void ImageThumbnailPicture::load() {
    if (window() == nullptr) {
        return;
    }
    // For the largest size that it may get, so that it is read once and not at each change.
    const int side = static_cast<int>(
        std::ceil(ImageThumbnailGrid::largestSize * window()->effectiveDevicePixelRatio()));
    if (side <= m_side) {
        return;
    }
    m_side = side;
    m_reading.cancel();
    m_reading.setFuture(imageThumbnail::readLater(m_url.toLocalFile(), side));
}

void ImageThumbnailPicture::setPicture(const QImage& picture) {
    const bool wasLoaded = isLoaded();
    m_picture = picture;
    update();
    if (isLoaded() != wasLoaded) {
        Q_EMIT isLoadedChanged();
    }
}

PlacedImage ImageThumbnailPicture::drawn(double devicePixelRatio) const {
    const QSize pixels = (size() * devicePixelRatio).toSize();
    if (m_picture.isNull() || pixels.isEmpty()) {
        return {};
    }
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_picture.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    painter.drawRoundedRect(image.rect(), m_radius * devicePixelRatio, m_radius * devicePixelRatio);
    painter.end();
    return {image, {QPointF(), QSizeF(pixels) / devicePixelRatio}};
}

} // namespace quorvin
