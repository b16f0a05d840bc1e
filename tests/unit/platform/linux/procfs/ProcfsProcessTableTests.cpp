#include "platform/linux/procfs/ProcfsProcessTable.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using ::testing::ElementsAre;

namespace {

/// Process directories made by hand, for what can't be had from a real kernel on demand.
class ProcfsProcessTableTest : public ::testing::Test {
protected:
    void write(const QString& path, const QByteArray& content) {
        const QString whole = root.filePath(path);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(whole).path()));
        QFile file(whole);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    void link(const QString& path, const QString& target) {
        const QString whole = root.filePath(path);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(whole).path()));
        ASSERT_TRUE(QFile::link(target, whole));
    }

    static bool anyone(ProcessID /*pid*/) { return true; }

    QTemporaryDir root;
    ProcfsProcessTable table{root.path().toUtf8()};
};

} // namespace

TEST_F(ProcfsProcessTableTest, NumbersAreOrderedAsNumbers) {
    write(u"10/stat"_s, "10 (b) S 1 1 1 34816 1");
    write(u"9/stat"_s, "9 (a) S 1 1 1 0 1");
    write(u"11/stat"_s, "11 (c) S 1 1 1 0 1");
    EXPECT_THAT(table.rows().value(),
                ElementsAre(ProcessRow{9, u"a"_s, std::nullopt}, ProcessRow{10, u"b"_s, u"pts/0"_s},
                            ProcessRow{11, u"c"_s, std::nullopt}));
}

TEST_F(ProcfsProcessTableTest, WhatIsNoReadableProcessIsPassedOver) {
    write(u"uptime"_s, "1 1");
    write(u"9x/stat"_s, "9 (a) S 1 1 1 0 1");
    write(u"99999999999/stat"_s, "9 (a) S 1 1 1 0 1");
    write(u"8/comm"_s, "gone meanwhile");
    write(u"7/stat"_s, "nonsense");
    write(u"6/stat"_s, "6 (a) S 1 1 1 0 1");
    EXPECT_THAT(table.rows().value(), ElementsAre(ProcessRow{6, u"a"_s, std::nullopt}));
}

TEST_F(ProcfsProcessTableTest, AnEmptyNameLeavesItsColumnToTheTerminal) {
    write(u"6/stat"_s, "6 () S 1 1 1 34816 1");
    EXPECT_THAT(table.rows().value(), ElementsAre(ProcessRow{6, u"pts/0"_s, std::nullopt}));
}

TEST_F(ProcfsProcessTableTest, WithoutProcessDirectoriesThereIsNoTable) {
    ProcfsProcessTable nowhere(root.filePath(u"nowhere"_s).toUtf8());
    EXPECT_EQ(nowhere.rows(), std::nullopt);
    EXPECT_EQ(nowhere.firstHolder(u"/dev/null"_s, anyone), std::nullopt);
}

TEST_F(ProcfsProcessTableTest, AnUnreadableProcessHoldsNothing) {
    write(u"5/stat"_s, "5 (a) S 1 1 1 0 1"); // no folder of descriptors
    link(u"6/fd/0"_s, u"/dev/null"_s);
    link(u"6/fd/1"_s, u"/dev/null"_s);
    link(u"7/fd/3"_s, u"/dev/zero"_s);
    EXPECT_EQ(table.firstHolder(u"/dev/null"_s, anyone), 6);
    EXPECT_EQ(table.firstHolder(u"/dev/zero"_s, anyone), 7);
    EXPECT_EQ(table.firstHolder(u"/dev/full"_s, anyone), std::nullopt);
}

TEST_F(ProcfsProcessTableTest, ADirectoryOutsideOfOurRootIsNotShown) {
    link(u"6/cwd"_s, u"(unreachable)/project"_s);
    EXPECT_EQ(table.workingDirectory(6), std::nullopt);
}
