#pragma once

#include <QFuture>
#include <QImage>
#include <QString>
#include <QThreadPool>

/// Pictures of image files that are small enough to be shown.
namespace quorvin::imageThumbnail {

/// The middle of the image, scaled down to a square of `side` pixels; smaller if the image is. It
/// stands as its camera was held, and an animation at its first frame. Null if the file is missing,
/// broken, of an unknown format or too large to be read. Any thread; takes up to seconds.
[[nodiscard]] QImage read(const QString& path, int side);

/// The same, on one of the threads below. A reading that is cancelled before it begins is left out.
[[nodiscard]] QFuture<QImage> readLater(const QString& path, int side);

/// Few, as an image may take hundreds of megabytes while it is read. Needs a QCoreApplication.
[[nodiscard]] QThreadPool& threads();

} // namespace quorvin::imageThumbnail
