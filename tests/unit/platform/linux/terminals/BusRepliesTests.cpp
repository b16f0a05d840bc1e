#include "platform/linux/terminals/BusReplies.h"

#include <limits>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(BusReplies, AProcessHasAPositiveNumberOfAnyType) {
    EXPECT_EQ(busReplies::process({812U}), 812);
    EXPECT_EQ(busReplies::process({812}), 812);
    EXPECT_EQ(busReplies::process({std::numeric_limits<ProcessID>::max()}), 2147483647);
    EXPECT_EQ(busReplies::process({2147483648U}), std::nullopt);
    EXPECT_EQ(busReplies::process({0U}), std::nullopt);
    EXPECT_EQ(busReplies::process({-1}), std::nullopt);
    EXPECT_EQ(busReplies::process({u"bash"_s}), std::nullopt);
    EXPECT_EQ(busReplies::process({}), std::nullopt);
}

TEST(BusReplies, ValuesOfAnotherTypeHoldNoTexts) {
    EXPECT_THAT(busReplies::texts({QStringList{u"1"_s, u"2"_s}}), ElementsAre(u"1"_s, u"2"_s));
    EXPECT_THAT(busReplies::texts({7}), IsEmpty());
    EXPECT_THAT(busReplies::texts({}), IsEmpty());
}

TEST(BusReplies, ChildrenAreTheNodesRightBelow) {
    const QString description = u"<!DOCTYPE node>\n"
                                "<node name='/Windows'>"
                                "<interface name='a'><method name='b'/></interface>"
                                "<node name='1'><node name='Menu'/></node>"
                                "<node/>"
                                "<node name='10'/>"
                                "</node>"_s;
    EXPECT_THAT(busReplies::childNames({description}), ElementsAre(u"1"_s, u"10"_s));
}

TEST(BusReplies, ABrokenDescriptionGivesWhatStandsBefore) {
    EXPECT_THAT(busReplies::childNames({u"<node><node name='1'/><node na"_s}), ElementsAre(u"1"_s));
    EXPECT_THAT(busReplies::childNames({u"no description"_s}), IsEmpty());
    EXPECT_THAT(busReplies::childNames({7}), IsEmpty());
}
