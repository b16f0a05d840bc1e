#include "views/dialogs/ActivityFeedModel.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

/// With the rows that came and went in words, as "+2..3" and "-0..1".
class ActivityFeedModelTest : public ::testing::Test {
protected:
    ActivityFeedModelTest() {
        const auto tell = [this](QChar sign) {
            return [this, sign](const QModelIndex&, int first, int last) {
                changes.append(u"%1%2..%3"_s.arg(sign).arg(first).arg(last));
            };
        };
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, tell(u'+'));
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, tell(u'-'));
        QObject::connect(&model, &ActivityFeedModel::entriesChanged,
                         [this] { rowsAtNotice.append(model.rowCount()); });
    }

    static QList<ActivityEntry> entries(int count) {
        QList<ActivityEntry> made;
        for (int i = 0; i < count; ++i) {
            ActivityEntry entry;
            entry.message = QString::number(i);
            made.append(entry);
        }
        return made;
    }

    ActivityFeedModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QStringList changes;
    QList<int> rowsAtNotice;
};

} // namespace

TEST_F(ActivityFeedModelTest, HoldsTheEntriesInTheirOrder) {
    const auto log = entries(3);
    model.setEntries(log);
    ASSERT_EQ(model.rowCount(), 3);
    for (int row = 0; row < 3; ++row) {
        const QVariant value = model.data(model.index(row), model.roleNames().key("entry"));
        EXPECT_EQ(value.value<ActivityEntry>(), log.at(row));
    }
    EXPECT_EQ(model.entries(), log);
}

TEST_F(ActivityFeedModelTest, AddsOnlyWhatIsNew) {
    auto log = entries(5);
    model.setEntries(log.first(3));
    changes.clear();
    model.setEntries(log);
    EXPECT_EQ(changes, QStringList{u"+3..4"_s});
}

TEST_F(ActivityFeedModelTest, DropsTheOldestOnes) {
    const auto log = entries(6);
    model.setEntries(log.first(5));
    changes.clear();
    model.setEntries(log.mid(2));
    EXPECT_EQ(changes, QStringList({u"-0..1"_s, u"+3..3"_s}));
    EXPECT_EQ(model.entries(), log.mid(2));
}

TEST_F(ActivityFeedModelTest, TakesALogThatBeganAnew) {
    model.setEntries(entries(4));
    const auto other = entries(2);
    model.setEntries(other);
    EXPECT_EQ(model.entries(), other);
    model.setEntries({});
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(ActivityFeedModelTest, TellsOfAChangeOnceAndAfterIt) {
    const auto log = entries(2);
    model.setEntries(log);
    model.setEntries(log);
    EXPECT_EQ(rowsAtNotice, QList<int>{2});
}
