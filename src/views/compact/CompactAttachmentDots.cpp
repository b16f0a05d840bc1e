#include "views/compact/CompactAttachmentDots.h"

#include <algorithm>

namespace quorvin {

namespace {

constexpr int maxDots = 8;
constexpr double diameter = 6;
constexpr double gap = 4;
constexpr double rightMargin = 12;
constexpr double bottomMargin = 10;
constexpr QSizeF hitSize(14, 14);
constexpr double hitTop = 20; // above the bottom edge

double firstX(int dots, QSizeF size) {
    return size.width() - rightMargin - ((dots - 1) * gap + dots * diameter);
}

} // namespace

int CompactAttachmentDots::dotCount(int imageCount) {
    return std::clamp(imageCount, 0, maxDots);
}

QRectF CompactAttachmentDots::dot(int index, int imageCount, QSizeF size) {
    return {firstX(dotCount(imageCount), size) + index * (diameter + gap),
            size.height() - bottomMargin - diameter, diameter, diameter};
}

int CompactAttachmentDots::dotAt(QPointF location, int imageCount, QSizeF size) {
    const int dots = dotCount(imageCount);
    for (int index = 0; index < dots; ++index) {
        // Neighbours overlap; the left one wins.
        const QPointF corner(firstX(dots, size) + index * (diameter + gap) - gap,
                             size.height() - hitTop);
        const QPointF inside = location - corner;
        if (inside.x() >= 0 && inside.x() < hitSize.width() && inside.y() >= 0 &&
            inside.y() < hitSize.height()) {
            return index;
        }
    }
    return -1;
}

} // namespace quorvin
