#pragma once

#include <QImage>
#include <QRectF>

namespace quorvin {

/// An image and where it belongs, in points; it may be drawn with several pixels to the point.
struct PlacedImage {
    QImage image; ///< premultiplied; null if nothing shows
    QRectF rect;
};

} // namespace quorvin
