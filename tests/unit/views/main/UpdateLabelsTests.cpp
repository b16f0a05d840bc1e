#include "views/main/UpdateLabels.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

QString subtitle(const decltype(UpdatePhase::value)& value) {
    UpdatePhase phase;
    phase.value = value;
    return UpdateLabels::subtitle(phase);
}

} // namespace

TEST(VersionTooltip, NamesTheProgramsVersion) {
    EXPECT_EQ(UpdateLabels::tooltip(false, u"2.0.0"_s, u"1.4.0"_s), u"Quorvin v1.4.0"_s);
}

TEST(VersionTooltip, OffersTheNewerOne) {
    EXPECT_EQ(UpdateLabels::tooltip(true, u"2.0.0"_s, u"1.4.0"_s),
              u"Update available: v2.0.0 — click to download"_s);
}

TEST(UpdateSubtitle, TellsThePhase) {
    EXPECT_EQ(subtitle(UpdatePhase::Idle{}), u"Click Update to download & install automatically"_s);
    EXPECT_EQ(subtitle(UpdatePhase::Downloading{0.426}), u"Downloading… 42%"_s);
    EXPECT_EQ(subtitle(UpdatePhase::Failed{u"no %1 network"_s}), u"Update failed: no %1 network"_s);
    EXPECT_EQ(subtitle(UpdatePhase::Installing{}), u"Installing — the app will relaunch…"_s);
}

TEST(UpdatePercentage, IsCutToWholePercents) {
    EXPECT_EQ(UpdateLabels::percentage(0), u"0%"_s);
    EXPECT_EQ(UpdateLabels::percentage(0.009), u"0%"_s);
    EXPECT_EQ(UpdateLabels::percentage(0.5), u"50%"_s);
    EXPECT_EQ(UpdateLabels::percentage(0.999), u"99%"_s);
    EXPECT_EQ(UpdateLabels::percentage(1), u"100%"_s);
}

TEST(UpdatePercentage, StaysWithinTheWhole) {
    EXPECT_EQ(UpdateLabels::percentage(1.7), u"100%"_s);
    EXPECT_EQ(UpdateLabels::percentage(-3), u"0%"_s);
}
