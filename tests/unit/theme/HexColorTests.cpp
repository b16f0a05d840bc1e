#include "theme/HexColor.h"

#include <gtest/gtest.h>

using namespace quorvin;

TEST(HexColor, ReadsTheThreeForms) {
    EXPECT_EQ(hexColor(u"1e66f5"), QColor(0x1e, 0x66, 0xf5));
    EXPECT_EQ(hexColor(u"80FF0000"), QColor(255, 0, 0, 128));
    EXPECT_EQ(hexColor(u"F97"), QColor(0xFF, 0x99, 0x77));
}

TEST(HexColor, AHashSignAndBlanksMakeNoDifference) {
    EXPECT_EQ(hexColor(u"  #1E66F5\t "), hexColor(u"1e66f5"));
    EXPECT_EQ(hexColor(u"(0af)"), hexColor(u"0af"));
}

TEST(HexColor, AnotherLengthIsOpaqueBlack) {
    for (const char16_t* text : {u"", u"#", u"12345", u"1234567", u"123456789", u"ff"}) {
        EXPECT_EQ(hexColor(text), QColor(0, 0, 0, 255)) << QString::fromUtf16(text).toStdString();
    }
}

TEST(HexColor, TheNumberEndsAtTheFirstOtherCharacter) {
    EXPECT_EQ(hexColor(u"12xyzz"), QColor(0, 0, 0x12));
    EXPECT_EQ(hexColor(u"xff"), QColor(0, 0, 0));
    EXPECT_EQ(hexColor(u"ff zz9"), QColor(0, 0, 0xff)) << "inner characters count in the length";
}
