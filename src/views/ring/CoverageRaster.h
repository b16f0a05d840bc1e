#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quorvin {

/// Fills polygons by the exact share of each pixel that they cover. Made for many thin shapes in
/// one image: it looks at no pixel that a shape's edges don't touch or enclose, and uses its memory
/// again.
class CoverageRaster {
public:
    /// From here on paints there: premultiplied, 32 bits a pixel. The image has to outlive the
    /// painting and must not be copied meanwhile.
    void begin(QImage& image);

    /// Adds a closed polygon to the shape, in pixels. Where two of them lie over each other, their
    /// areas add up if they turn the same way and cancel out if they don't. What is not a number or
    /// is absurdly far away is left out.
    void add(std::span<const QPointF> polygon);

    /// Paints the shape over what is there, and starts the next.
    void paint(const QColor& color, double opacity);

private:
    /// What the edges within one pixel do to the coverage of their row.
    struct Cell {
        float share = 0;  ///< of the pixel itself
        float height = 0; ///< of all pixels to the right of it
    };

    struct Edge {
        double x = 0; ///< at its top
        double top = 0;
        double bottom = 0;
        double slope = 0;     ///< pixels to the right for each one down
        double direction = 0; ///< 1 or -1
    };

    void addEdge(const QPointF& from, const QPointF& to);
    void addPartlyOutside(const Edge& edge);
    void addInside(const Edge& edge);
    void paintRow(int y, std::uint64_t color, float alpha);

    [[nodiscard]] std::ptrdiff_t cellAt(int column, int row) const {
        return static_cast<std::ptrdiff_t>(row) * m_rowCells + column + 1;
    }

    std::uint32_t* m_pixels = nullptr;
    int m_rowPixels = 0;
    int m_width = 0;
    int m_height = 0;
    // With one more on each side than the image has pixels: an edge may end there, or come there by
    // rounding.
    std::vector<Cell> m_cells;
    std::vector<std::uint64_t> m_touched; // a bit for each cell
    int m_rowCells = 0;                   // whole words of bits
    // The rows that the shape has touched.
    int m_top = 0;
    int m_bottom = 0;
};

} // namespace quorvin
