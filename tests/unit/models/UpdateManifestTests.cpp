#include "models/UpdateManifest.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

TEST(UpdateManifest, ReadsItsThreeKeysAndIgnoresOthers) {
    const auto manifest = UpdateManifest::decode(
        R"({"version": "v1.2.3", "dmg": "https://a/b.dmg", "notes": "New", "size": 12})");
    ASSERT_TRUE(manifest.has_value());
    EXPECT_EQ(manifest->version, u"v1.2.3");
    EXPECT_EQ(manifest->dmg, u"https://a/b.dmg");
    EXPECT_EQ(manifest->notes, u"New");
}

TEST(UpdateManifest, NeedsNoMoreThanAVersion) {
    const auto manifest = UpdateManifest::decode(R"({"version": "2", "notes": null})");
    ASSERT_TRUE(manifest.has_value());
    EXPECT_FALSE(manifest->dmg.has_value());
    EXPECT_FALSE(manifest->notes.has_value());
}

TEST(UpdateManifest, WithoutAVersionOrWithAWrongTypeIsNone) {
    for (const char* json :
         {"", "<html>", "[]", "\"1.0\"", "{}", R"({"dmg": "x"})", R"({"version": 1})",
          R"({"version": null})", R"({"version": "1", "dmg": 2})",
          R"({"version": "1", "notes": ["x"]})", R"({"version": "1")"}) {
        EXPECT_FALSE(UpdateManifest::decode(json).has_value()) << json;
    }
}

TEST(UpdateManifest, OneLeadingVIsNotPartOfTheNumber) {
    const auto number = [](const char* json) {
        return UpdateManifest::decode(json).value().versionNumber();
    };
    EXPECT_EQ(number(R"({"version": "v1.2.3"})"), u"1.2.3");
    EXPECT_EQ(number(R"({"version": "1.2.3"})"), u"1.2.3");
    EXPECT_EQ(number(R"({"version": "vv1.0"})"), u"v1.0");
    EXPECT_EQ(number(R"({"version": ""})"), u"");
}

TEST(NumericComparison, RunsOfDigitsCountAsNumbers) {
    EXPECT_TRUE(std::is_gt(compareNumerically(u"1.10", u"1.9")));
    EXPECT_TRUE(std::is_gt(compareNumerically(u"1.10.0", u"1.9.0")));
    EXPECT_TRUE(std::is_lt(compareNumerically(u"1.2.3", u"1.2.10")));
    EXPECT_TRUE(std::is_gt(compareNumerically(u"2", u"1.9.9")));
    EXPECT_TRUE(std::is_eq(compareNumerically(u"1.2.3", u"1.2.3")));
    EXPECT_TRUE(std::is_eq(compareNumerically(u"1.02", u"1.2")));
    EXPECT_TRUE(std::is_eq(compareNumerically(u"0", u"000")));
    EXPECT_TRUE(std::is_gt(compareNumerically(u"0.1", u"0")));
    EXPECT_TRUE(std::is_gt(compareNumerically(u"18446744073709551617", u"18446744073709551616")));
}

TEST(NumericComparison, OtherCharactersCompareByTheirCodes) {
    EXPECT_TRUE(std::is_lt(compareNumerically(u"1.0", u"1.0-beta")));
    EXPECT_TRUE(std::is_lt(compareNumerically(u"1.0-alpha", u"1.0-beta")));
    EXPECT_TRUE(std::is_gt(compareNumerically(u"v1.0", u"1.0")));
    EXPECT_TRUE(std::is_lt(compareNumerically(u"", u"0")));
}
