#include "views/compact/CompactAttachmentDots.h"

#include <gtest/gtest.h>

using namespace quorvin;

namespace {

constexpr QSizeF strip(360, 48);

} // namespace

TEST(CompactAttachmentDots, AreAsManyAsTheImagesUpToEight) {
    EXPECT_EQ(CompactAttachmentDots::dotCount(0), 0);
    EXPECT_EQ(CompactAttachmentDots::dotCount(1), 1);
    EXPECT_EQ(CompactAttachmentDots::dotCount(8), 8);
    EXPECT_EQ(CompactAttachmentDots::dotCount(9), 8);
    EXPECT_EQ(CompactAttachmentDots::dotCount(18), 8);
}

TEST(CompactAttachmentDots, EndTwelvePointsFromTheRightEdge) {
    EXPECT_EQ(CompactAttachmentDots::dot(0, 1, strip), QRectF(342, 32, 6, 6));
    EXPECT_EQ(CompactAttachmentDots::dot(0, 3, strip), QRectF(322, 32, 6, 6));
    EXPECT_EQ(CompactAttachmentDots::dot(2, 3, strip), QRectF(342, 32, 6, 6));
    EXPECT_EQ(CompactAttachmentDots::dot(0, 9, strip), QRectF(272, 32, 6, 6));
    EXPECT_EQ(CompactAttachmentDots::dot(7, 9, strip), QRectF(342, 32, 6, 6));
}

TEST(CompactAttachmentDots, TakeTapsAroundThem) {
    EXPECT_EQ(CompactAttachmentDots::dotAt({345, 35}, 1, strip), 0);
    EXPECT_EQ(CompactAttachmentDots::dotAt({338, 28}, 1, strip), 0);
    EXPECT_EQ(CompactAttachmentDots::dotAt({351.9, 41.9}, 1, strip), 0);
    EXPECT_EQ(CompactAttachmentDots::dotAt({337.9, 35}, 1, strip), -1);
    EXPECT_EQ(CompactAttachmentDots::dotAt({352, 35}, 1, strip), -1);
    EXPECT_EQ(CompactAttachmentDots::dotAt({345, 27.9}, 1, strip), -1);
    EXPECT_EQ(CompactAttachmentDots::dotAt({345, 42}, 1, strip), -1);
}

TEST(CompactAttachmentDots, GiveATapBetweenTwoToTheLeftOne) {
    EXPECT_EQ(CompactAttachmentDots::dotAt({330, 35}, 3, strip), 0);
    EXPECT_EQ(CompactAttachmentDots::dotAt({332, 35}, 3, strip), 1);
    EXPECT_EQ(CompactAttachmentDots::dotAt({345, 35}, 3, strip), 2);
}

TEST(CompactAttachmentDots, TakeNoTapsWithoutImages) {
    EXPECT_EQ(CompactAttachmentDots::dotAt({345, 35}, 0, strip), -1);
}
