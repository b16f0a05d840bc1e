#include "views/draft/ImageThumbnailReader.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QImageReader>
#include <QPromise>

#include <algorithm>
#include <memory>

namespace quorvin::imageThumbnail {

namespace {

constexpr int threadCount = 2;
/// Room for 64 megapixels. Qt's own limit is too low for pictures with 16 bits to the channel.
constexpr int megabytesForOne = 256;

QRect middleSquare(QSize size) {
    const int side = std::min(size.width(), size.height());
    return {(size.width() - side) / 2, (size.height() - side) / 2, side, side};
}

} // namespace

QImage read(const QString& path, int side) {
    // A pipe would never end.
    if (side <= 0 || !QFileInfo(path).isFile()) {
        return {};
    }
    QImageReader reader(path);
    reader.setAutoTransform(true);
    // Some formats are read at a lower resolution at once. Never enlarged, as a hair-thin image
    // would be past all bounds then.
    const QSize whole = reader.size();
    const int shortSide = std::min(whole.width(), whole.height());
    if (shortSide > side) {
        reader.setScaledSize(whole.scaled(QSize(side, side), Qt::KeepAspectRatioByExpanding)
                                 .expandedTo({side, side}));
    }
    const QImage image = reader.read();
    if (image.isNull()) {
        return {};
    }
    const QImage square = image.copy(middleSquare(image.size()));
    const QImage scaled = square.width() > side ? square.scaled(side, side, Qt::IgnoreAspectRatio,
                                                                Qt::SmoothTransformation)
                                                : square;
    return scaled.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QFuture<QImage> readLater(const QString& path, int side) {
    const auto promise = std::make_shared<QPromise<QImage>>();
    promise->start();
    threads().start([promise, path, side] {
        if (!promise->isCanceled()) {
            promise->addResult(read(path, side));
        }
        promise->finish();
    });
    return promise->future();
}

QThreadPool& threads() {
    static QThreadPool* const pool = [] {
        QImageReader::setAllocationLimit(megabytesForOne);
        // It ends with the application, which the readers of the formats need.
        auto* const made = new QThreadPool(QCoreApplication::instance());
        made->setMaxThreadCount(threadCount);
        return made;
    }();
    return *pool;
}

} // namespace quorvin::imageThumbnail
