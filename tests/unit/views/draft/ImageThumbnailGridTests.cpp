#include "views/draft/ImageThumbnailGrid.h"

#include <QRectF>

#include <gtest/gtest.h>

using namespace quorvin;

using Grid = ImageThumbnailGrid;

namespace {

constexpr double gridWidth = 516; // in a window of the least width

QRectF square(int index, int count, double room) {
    const int side = Grid::size(count);
    return {Grid::place(index, count, room), QSizeF(side, side)};
}

} // namespace

TEST(ImageThumbnailGrid, HasSmallerSquaresForMoreImages) {
    EXPECT_EQ(Grid::size(1), 80);
    EXPECT_EQ(Grid::size(5), 80);
    EXPECT_EQ(Grid::size(6), 64);
    EXPECT_EQ(Grid::size(10), 64);
    EXPECT_EQ(Grid::size(11), 48);
    EXPECT_EQ(Grid::size(18), 48);
}

TEST(ImageThumbnailGrid, HasAsManyColumnsAsFit) {
    EXPECT_EQ(Grid::columns(5, gridWidth), 6);   // 6 * 80 + 5 * 4 = 500, and 84 more would not fit
    EXPECT_EQ(Grid::columns(6, gridWidth), 7);   // 7 * 64 + 6 * 4 = 472
    EXPECT_EQ(Grid::columns(18, gridWidth), 10); // 10 * 48 + 9 * 4 = 516, to the point
    EXPECT_EQ(Grid::columns(18, 515.5), 9);
    EXPECT_EQ(Grid::columns(18, 1136), 21);
    EXPECT_EQ(Grid::columns(1, 0), 1);
    EXPECT_EQ(Grid::columns(1, 79), 1);
}

TEST(ImageThumbnailGrid, IsAsHighAsItsRowsAndSixBelow) {
    EXPECT_EQ(Grid::height(0, gridWidth), 0);
    EXPECT_EQ(Grid::height(1, gridWidth), 80 + 6);
    EXPECT_EQ(Grid::height(5, gridWidth), 80 + 6);
    EXPECT_EQ(Grid::height(7, gridWidth), 64 + 6);
    EXPECT_EQ(Grid::height(8, gridWidth), 2 * 64 + 4 + 6);
    EXPECT_EQ(Grid::height(11, gridWidth), 2 * 48 + 4 + 6);
    EXPECT_EQ(Grid::height(18, gridWidth), 2 * 48 + 4 + 6);
    EXPECT_EQ(Grid::height(18, 1136), 48 + 6);
    EXPECT_EQ(Grid::height(3, 80), 3 * 80 + 2 * 4 + 6);
}

TEST(ImageThumbnailGrid, PutsThemInRowsFromTheUpperLeft) {
    EXPECT_EQ(Grid::place(0, 18, gridWidth), QPointF(0, 0));
    EXPECT_EQ(Grid::place(1, 18, gridWidth), QPointF(52, 0));
    EXPECT_EQ(Grid::place(9, 18, gridWidth), QPointF(468, 0));
    EXPECT_EQ(Grid::place(10, 18, gridWidth), QPointF(0, 52));
    EXPECT_EQ(Grid::place(17, 18, gridWidth), QPointF(364, 52));
    // What is left of the width is shared: (516 + 4) / 6 for each column.
    EXPECT_EQ(Grid::place(3, 5, gridWidth), QPointF(260, 0));
}

TEST(ImageThumbnailGrid, KeepsThemApartAndInsideAtAnyWidth) {
    for (double room = 80; room < 2000; room += 7.5) {
        for (int count = 1; count <= 18; ++count) {
            for (int index = 0; index < count; ++index) {
                const QRectF one = square(index, count, room);
                ASSERT_LE(one.right(), room) << count << " in " << room;
                ASSERT_LE(one.bottom() + 6, Grid::height(count, room));
                if (index > 0) {
                    const QRectF before = square(index - 1, count, room);
                    ASSERT_TRUE(one.left() >= before.right() + 3.5 || one.top() > before.bottom())
                        << count << " in " << room;
                }
            }
        }
    }
}
