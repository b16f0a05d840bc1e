#include "theme/SymbolImage.h"

#include <QCache>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

/// The ink of a drawing, 0 to 255 for each pixel.
QImage drawnInk(const QString& path, int side) {
    QSvgRenderer drawing(path);
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    QImage ink(side, side, QImage::Format_Alpha8);
    for (int y = 0; y < side; ++y) {
        const auto* const from = reinterpret_cast<const QRgb*>(image.constScanLine(y)); // NOLINT
        uchar* const to = ink.scanLine(y);
        for (int x = 0; x < side; ++x) {
            to[x] = static_cast<uchar>(qAlpha(from[x]) * (255 - qRed(from[x])) / 255);
        }
    }
    return ink;
}

/// A change of colour, as under the pointer, is shown frame by frame: the drawing is read only
/// once.
const QImage& inkOf(const QString& name, int side) {
    constexpr int keptPixels = 512 * 512;
    static QCache<std::pair<QString, int>, QImage> kept(keptPixels);
    const std::pair key(name, side);
    if (const QImage* const found = kept.object(key)) {
        return *found;
    }
    static const QImage none;
    const QString path = u":/quorvin/icons/%1.svg"_s.arg(name);
    if (side <= 0 || side * side > keptPixels || !QFile::exists(path)) {
        return none;
    }
    auto* const ink = new QImage(drawnInk(path, side));
    kept.insert(key, ink, side * side);
    return *ink;
}

} // namespace

QImage symbolImage(const QString& name, int side, const QColor& color) {
    const QImage& ink = inkOf(name, side);
    if (ink.isNull()) {
        return {};
    }
    QImage image(ink.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, ink);
    return image;
}

} // namespace quorvin
