#include "models/UpdatePhase.h"

#include <QMetaProperty>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

/// As a view reads it.
QVariantList properties(const UpdatePhase& phase) {
    QVariantList values;
    for (const char* name : {"kind", "fraction", "message"}) {
        const QMetaObject& type = UpdatePhase::staticMetaObject;
        values.append(type.property(type.indexOfProperty(name)).readOnGadget(&phase));
    }
    return values;
}

} // namespace

TEST(UpdatePhase, ViewsReadItsKindAndWhatGoesWithIt) {
    EXPECT_EQ(properties(UpdatePhase()), (QVariantList{u"idle"_s, 0.0, u""_s}));
    EXPECT_EQ(properties({UpdatePhase::Downloading{0.25}}),
              (QVariantList{u"downloading"_s, 0.25, u""_s}));
    EXPECT_EQ(properties({UpdatePhase::Installing{}}), (QVariantList{u"installing"_s, 0.0, u""_s}));
    EXPECT_EQ(properties({UpdatePhase::Failed{u"no network"_s}}),
              (QVariantList{u"failed"_s, 0.0, u"no network"_s}));
}

TEST(UpdatePhase, IsComparedByValue) {
    EXPECT_EQ(UpdatePhase{UpdatePhase::Downloading{0.5}},
              UpdatePhase{UpdatePhase::Downloading{0.5}});
    EXPECT_NE(UpdatePhase{UpdatePhase::Downloading{0.5}},
              UpdatePhase{UpdatePhase::Downloading{0.6}});
    EXPECT_NE(UpdatePhase{UpdatePhase::Downloading{0}}, UpdatePhase{UpdatePhase::Installing{}});
    EXPECT_NE(UpdatePhase{UpdatePhase::Failed{u"a"_s}}, UpdatePhase{UpdatePhase::Failed{u"b"_s}});
}

TEST(UpdatePhase, IsBusyBetweenTheStartAndTheEnd) {
    EXPECT_FALSE(UpdatePhase().isBusy());
    EXPECT_TRUE(UpdatePhase{UpdatePhase::Downloading{1}}.isBusy());
    EXPECT_TRUE(UpdatePhase{UpdatePhase::Installing{}}.isBusy());
    EXPECT_FALSE(UpdatePhase{UpdatePhase::Failed{u"a"_s}}.isBusy());
}
