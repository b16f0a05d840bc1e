#include "theme/SymbolImage.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

QImage symbolImage(const QString& name, int side, const QColor& color) {
    const QString path = u":/quorvin/icons/%1.svg"_s.arg(name);
    if (side <= 0 || !QFile::exists(path)) {
        return {};
    }
    QSvgRenderer drawing(path);
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    for (int y = 0; y < side; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y)); // NOLINT: 32-bit pixels
        for (int x = 0; x < side; ++x) {
            const int ink = qAlpha(line[x]) * (255 - qRed(line[x])) / 255;
            line[x] = qRgba(color.red(), color.green(), color.blue(), ink * color.alpha() / 255);
        }
    }
    return image;
}

} // namespace quorvin
