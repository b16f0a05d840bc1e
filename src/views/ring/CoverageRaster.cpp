#include "views/ring/CoverageRaster.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

namespace quorvin {

namespace {

constexpr double farAway = 1e6; // pixels
constexpr double never = std::numeric_limits<double>::infinity();
/// Of an edge, in pixels; what is more level covers nothing.
constexpr double leastHeight = 1e-9;
constexpr int bitsPerWord = 64;

bool isUsable(const QPointF& point) {
    return std::abs(point.x()) < farAway && std::abs(point.y()) < farAway; // false for a NaN
}

/// The four channels with 16 bits each, so that they can be reckoned with at once.
std::uint64_t spread(std::uint32_t pixel) {
    return (pixel | std::uint64_t(pixel) << 24U) & 0x00ff00ff00ff00ffU;
}

/// `color` with `alpha` (0 to 255) over `pixel`, rounded.
void blend(std::uint32_t& pixel, std::uint64_t color, std::uint32_t alpha) {
    std::uint64_t mixed = color * alpha + spread(pixel) * (255 - alpha);
    mixed += ((mixed >> 8U) & 0x00ff00ff00ff00ffU) + 0x0080008000800080U; // x / 255 as x / 256
    mixed = (mixed >> 8U) & 0x00ff00ff00ff00ffU;
    pixel = static_cast<std::uint32_t>(mixed | mixed >> 24U);
}

} // namespace

void CoverageRaster::begin(QImage& image) {
    m_pixels = reinterpret_cast<std::uint32_t*>(image.bits());
    m_rowPixels = static_cast<int>(image.bytesPerLine() / qsizetype(sizeof(std::uint32_t)));
    m_width = image.width();
    m_height = image.height();
    m_rowCells = (m_width + 3 + bitsPerWord - 1) / bitsPerWord * bitsPerWord;
    const auto cells =
        static_cast<std::size_t>(m_rowCells) * static_cast<std::size_t>(m_height + 2);
    // All of them are 0 between two shapes.
    m_cells.resize(cells);
    m_touched.resize(cells / bitsPerWord);
    m_top = m_height;
    m_bottom = 0;
}

void CoverageRaster::add(std::span<const QPointF> polygon) {
    if (polygon.empty() || !std::all_of(polygon.begin(), polygon.end(), isUsable)) {
        return;
    }
    addEdge(polygon.back(), polygon.front());
    for (std::size_t i = 1; i < polygon.size(); ++i) {
        addEdge(polygon[i - 1], polygon[i]);
    }
}

void CoverageRaster::addEdge(const QPointF& from, const QPointF& to) {
    const bool isDownward = from.y() < to.y();
    const QPointF& upper = isDownward ? from : to;
    const QPointF& lower = isDownward ? to : from;
    const double top = std::max(upper.y(), 0.0);
    const double bottom = std::min(lower.y(), static_cast<double>(m_height));
    if (bottom - top < leastHeight) {
        return;
    }
    const double slope = (lower.x() - upper.x()) / (lower.y() - upper.y());
    const Edge edge{.x = upper.x() + (top - upper.y()) * slope,
                    .top = top,
                    .bottom = bottom,
                    .slope = slope,
                    .direction = isDownward ? 1.0 : -1.0};
    const double endX = edge.x + (bottom - top) * slope;
    if (std::min(edge.x, endX) >= 0 && std::max(edge.x, endX) <= m_width) {
        addInside(edge);
    } else {
        addPartlyOutside(edge);
    }
}

/// What lies to the left of the image covers all of its row; what lies to the right, nothing.
void CoverageRaster::addPartlyOutside(const Edge& edge) {
    const double firstSide = edge.slope < 0 ? m_width : 0;
    const auto reaches = [&edge](double x) {
        return edge.slope == 0
                   ? edge.bottom
                   : std::clamp(edge.top + (x - edge.x) / edge.slope, edge.top, edge.bottom);
    };
    const double enters = reaches(firstSide);
    const double leaves = std::max(reaches(m_width - firstSide), enters);
    const std::array cuts{edge.top, enters, leaves, edge.bottom};
    for (std::size_t i = 1; i < cuts.size(); ++i) {
        if (cuts[i - 1] >= cuts[i]) {
            continue;
        }
        Edge part = edge;
        part.top = cuts[i - 1];
        part.bottom = cuts[i];
        part.x = edge.x + (part.top - edge.top) * edge.slope;
        const double middle = part.x + (part.bottom - part.top) / 2 * edge.slope;
        if (middle < 0) {
            part.x = 0;
            part.slope = 0;
        }
        if (middle < m_width) {
            addInside(part);
        }
    }
}

/// Goes from cell to cell, by whichever of a cell's sides comes first.
void CoverageRaster::addInside(const Edge& edge) {
    const double endX = edge.x + (edge.bottom - edge.top) * edge.slope;
    const auto row = static_cast<int>(edge.top);
    const int rows = static_cast<int>(edge.bottom) - row;
    auto column = static_cast<int>(edge.x);
    const int columns = std::abs(static_cast<int>(endX) - column);
    const int side = edge.slope < 0 ? -1 : 1;
    const double perColumn = 1 / std::abs(edge.slope);
    double columnEnd = never; // where it comes upon the next column; the same for the row
    if (columns > 0) {
        columnEnd = edge.top + (side < 0 ? edge.x - column : column + 1 - edge.x) * perColumn;
    }
    double rowEnd = row + 1;
    double x = edge.x;
    double y = edge.top;
    std::ptrdiff_t place = cellAt(column, row);
    const auto addUpTo = [&](double nextX, double nextY) {
        const double height = (nextY - y) * edge.direction;
        Cell& cell = m_cells[static_cast<std::size_t>(place)];
        cell.share += static_cast<float>(height * (column + 1 - (x + nextX) / 2));
        cell.height += static_cast<float>(height);
        m_touched[static_cast<std::size_t>(place / bitsPerWord)] |=
            std::uint64_t(1) << static_cast<unsigned>(place % bitsPerWord);
        x = nextX;
        y = nextY;
    };
    for (int steps = columns + rows; steps > 0; --steps) {
        const bool isColumn = columnEnd < rowEnd;
        const double nextY = isColumn ? columnEnd : rowEnd;
        addUpTo(edge.x + (nextY - edge.top) * edge.slope, nextY);
        place += isColumn ? side : m_rowCells;
        column += isColumn ? side : 0;
        columnEnd += isColumn ? perColumn : 0;
        rowEnd += isColumn ? 0 : 1;
    }
    addUpTo(endX, edge.bottom);
    m_top = std::min(m_top, row);
    m_bottom = std::max(m_bottom, std::min(row + rows + 1, m_height));
}

void CoverageRaster::paint(const QColor& color, double opacity) {
    const std::uint64_t channels = spread(color.rgb());
    const auto alpha = static_cast<float>(std::clamp(opacity, 0.0, 1.0) * 255);
    for (int y = m_top; y < m_bottom; ++y) {
        paintRow(y, channels, alpha);
    }
    m_top = m_height;
    m_bottom = 0;
}

inline void CoverageRaster::paintRow(int y, std::uint64_t color, float alpha) {
    std::uint32_t* const pixels = m_pixels + static_cast<std::ptrdiff_t>(y) * m_rowPixels;
    const auto strength = [alpha](float coverage) {
        return static_cast<std::uint32_t>(std::min(std::abs(coverage), 1.0F) * alpha + 0.5F);
    };

    float coverage = 0; // of the pixels from the last cell on
    int next = 0;       // the first of them
    const auto fillUpTo = [&](int x) {
        if (const std::uint32_t inside = strength(coverage); inside > 0) {
            for (; next < x; ++next) {
                blend(pixels[next], color, inside);
            }
        }
    };
    const std::ptrdiff_t begin = cellAt(-1, y);
    for (std::ptrdiff_t place = begin; place < begin + m_rowCells; place += bitsPerWord) {
        std::uint64_t bits =
            std::exchange(m_touched[static_cast<std::size_t>(place / bitsPerWord)], 0);
        while (bits != 0) {
            const std::ptrdiff_t touched = place + std::countr_zero(bits);
            const auto x = static_cast<int>(touched - begin) - 1;
            bits &= bits - 1;
            const Cell cell = std::exchange(m_cells[static_cast<std::size_t>(touched)], {});
            if (x >= 0 && x < m_width) {
                if (next < x) {
                    fillUpTo(x);
                }
                blend(pixels[x], color, strength(coverage + cell.share));
                next = x + 1;
            }
            coverage += cell.height;
        }
    }
    fillUpTo(m_width);
}

} // namespace quorvin
