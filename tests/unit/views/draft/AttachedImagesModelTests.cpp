#include "views/draft/AttachedImagesModel.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

QList<QUrl> named(const QString& letters) {
    QList<QUrl> urls;
    for (const QChar letter : letters) {
        urls.append(QUrl::fromLocalFile(u"/"_s + letter + u".png"_s));
    }
    return urls;
}

class AttachedImages : public ::testing::Test {
protected:
    AttachedImages() {
        QObject::connect(&model, &QAbstractListModel::rowsRemoved,
                         [this](const QModelIndex&, int first, int last) {
                             changes.append(u"-%1..%2"_s.arg(first).arg(last));
                         });
        QObject::connect(&model, &QAbstractListModel::rowsInserted,
                         [this](const QModelIndex&, int first, int last) {
                             changes.append(u"+%1..%2"_s.arg(first).arg(last));
                         });
        QObject::connect(&model, &QAbstractListModel::modelReset,
                         [this] { changes.append(u"reset"_s); });
    }
    /// Goes from one list to another and gives what happened to the rows.
    QStringList change(const QString& from, const QString& to) {
        model.setImages(named(from));
        changes.clear();
        model.setImages(named(to));
        EXPECT_EQ(model.images(), named(to));
        EXPECT_EQ(model.rowCount(), to.size());
        for (int row = 0; row < model.rowCount(); ++row) {
            EXPECT_EQ(model.data(model.index(row), Qt::UserRole).toUrl(), named(to)[row]);
        }
        return changes;
    }

    AttachedImagesModel model;
    QStringList changes;
};

} // namespace

TEST_F(AttachedImages, AddsNewOnesBehindTheOthers) {
    EXPECT_EQ(change(u""_s, u"abc"_s), QStringList({u"+0..2"_s}));
    EXPECT_EQ(change(u"ab"_s, u"abcd"_s), QStringList({u"+2..3"_s}));
    EXPECT_EQ(change(u"a"_s, u"aa"_s), QStringList({u"+1..1"_s}));
}

TEST_F(AttachedImages, TakesAwayOnlyWhatHasGone) {
    EXPECT_EQ(change(u"abc"_s, u"bc"_s), QStringList({u"-0..0"_s}));
    EXPECT_EQ(change(u"abc"_s, u"ac"_s), QStringList({u"-1..1"_s}));
    EXPECT_EQ(change(u"abc"_s, u"ab"_s), QStringList({u"-2..2"_s}));
    EXPECT_EQ(change(u"abcad"_s, u"bcd"_s), QStringList({u"-0..0"_s, u"-2..2"_s}));
    EXPECT_EQ(change(u"aba"_s, u"ba"_s), QStringList({u"-0..0"_s}));
    EXPECT_EQ(change(u"abc"_s, u""_s), QStringList({u"-0..2"_s}));
}

TEST_F(AttachedImages, TakesAnyOtherList) {
    EXPECT_EQ(change(u"abc"_s, u"xyz"_s), QStringList({u"-0..2"_s, u"+0..2"_s}));
    EXPECT_EQ(change(u"abc"_s, u"cba"_s), QStringList({u"-0..1"_s, u"+1..2"_s}));
}

TEST_F(AttachedImages, SaysNothingWhenNothingChanges) {
    int notices = 0;
    QObject::connect(&model, &AttachedImagesModel::imagesChanged, [&] { ++notices; });
    EXPECT_EQ(change(u"ab"_s, u"ab"_s), QStringList());
    EXPECT_EQ(notices, 1) << "of the first list";
}

TEST_F(AttachedImages, HasNothingBesideItsRows) {
    model.setImages(named(u"a"_s));
    EXPECT_FALSE(model.data(model.index(1), Qt::UserRole).isValid());
    EXPECT_FALSE(model.data(QModelIndex(), Qt::UserRole).isValid());
    EXPECT_FALSE(model.data(model.index(0), Qt::DisplayRole).isValid());
    EXPECT_EQ(model.rowCount(model.index(0)), 0);
}
