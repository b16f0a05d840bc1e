#include "theme/GeistFont.h"

#include <QStringList>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

TEST(GeistFont, EveryWeightHasItsFace) {
    EXPECT_EQ(GeistFont::name(QFont::Black), u"Geist-Black");
    EXPECT_EQ(GeistFont::name(QFont::ExtraBold), u"Geist-Black");
    EXPECT_EQ(GeistFont::name(QFont::Bold), u"Geist-Bold");
    EXPECT_EQ(GeistFont::name(QFont::DemiBold), u"Geist-SemiBold");
    EXPECT_EQ(GeistFont::name(QFont::Medium), u"Geist-Medium");
    EXPECT_EQ(GeistFont::name(QFont::Normal), u"Geist-Regular");
    EXPECT_EQ(GeistFont::name(QFont::Light), u"Geist-Light");
    EXPECT_EQ(GeistFont::name(QFont::ExtraLight), u"Geist-Light");
    EXPECT_EQ(GeistFont::name(QFont::Thin), u"Geist-Light");
    EXPECT_EQ(GeistFont::name(static_cast<QFont::Weight>(450)), u"Geist-Regular");
}

TEST(GeistFont, InterStandsInWithTheWeightOfTheFace) {
    const QFont font = GeistFont::font(12, QFont::DemiBold);
    const QStringList families{u"Geist-SemiBold"_s, u"Geist"_s, u"Inter"_s};
    EXPECT_EQ(font.families(), families);
    EXPECT_EQ(font.pixelSize(), 12);
    EXPECT_EQ(font.weight(), QFont::DemiBold);
    EXPECT_EQ(GeistFont::font(12, QFont::Thin).weight(), QFont::Light);
    EXPECT_EQ(GeistFont::font(12, QFont::ExtraBold).weight(), QFont::Black);
    EXPECT_EQ(GeistFont::font(12, static_cast<QFont::Weight>(450)).weight(), QFont::Normal);
}
