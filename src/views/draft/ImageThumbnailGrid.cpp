#include "views/draft/ImageThumbnailGrid.h"

#include <algorithm>
#include <cmath>

namespace quorvin {

namespace {

constexpr int spacing = 4;
constexpr int below = 6;

} // namespace

int ImageThumbnailGrid::size(int count) {
    if (count < 6) {
        return largestSize;
    }
    return count <= 10 ? 64 : 48;
}

int ImageThumbnailGrid::columns(int count, double width) {
    return std::max(1, static_cast<int>((width + spacing) / (size(count) + spacing)));
}

QPointF ImageThumbnailGrid::place(int index, int count, double width) {
    const int inRow = columns(count, width);
    const double step = (std::max<double>(width, size(count)) + spacing) / inRow;
    return {std::floor(index % inRow * step),
            static_cast<double>(index / inRow * (size(count) + spacing))};
}

int ImageThumbnailGrid::height(int count, double width) {
    const int inRow = columns(count, width);
    const int rows = (count + inRow - 1) / inRow;
    return rows == 0 ? 0 : rows * (size(count) + spacing) - spacing + below;
}

} // namespace quorvin
