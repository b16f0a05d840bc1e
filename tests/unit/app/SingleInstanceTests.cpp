#include "app/SingleInstance.h"
#include "support/Eventually.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

class SingleInstanceTest : public ::testing::Test {
protected:
    QTemporaryDir directory;
    SingleInstance first{directory.path()};
};

} // namespace

TEST_F(SingleInstanceTest, OnlyTheFirstGoesOnAndHearsOfEveryLaterStart) {
    int laterStarts = 0;
    first.onLaterStart([&] { ++laterStarts; });
    ASSERT_TRUE(first.isFirst());
    for (int count = 1; count <= 3; ++count) {
        SingleInstance later(directory.path());
        EXPECT_FALSE(later.isFirst());
        EXPECT_TRUE(eventually([&] { return laterStarts == count; }));
    }
}

TEST_F(SingleInstanceTest, WithAnotherDirectoryIsAnotherUser) {
    const QTemporaryDir other;
    SingleInstance ofOther(other.path());
    EXPECT_TRUE(first.isFirst());
    EXPECT_TRUE(ofOther.isFirst());
}

TEST_F(SingleInstanceTest, AfterItsEndTheNextIsFirst) {
    {
        SingleInstance before(directory.path());
        ASSERT_TRUE(before.isFirst());
    }
    EXPECT_TRUE(first.isFirst());
}

TEST_F(SingleInstanceTest, WhatACrashLeftBehindIsNoInstance) {
    const pid_t crashing = fork();
    if (crashing == 0) {
        SingleInstance instance(directory.path());
        _exit(instance.isFirst() ? 0 : 1); // without any destructor
    }
    int status = -1;
    ASSERT_EQ(waitpid(crashing, &status, 0), crashing);
    ASSERT_EQ(status, 0);
    ASSERT_TRUE(QFile::exists(directory.filePath(u"quorvin.lock"_s)));
    ASSERT_TRUE(QFile::exists(directory.filePath(u"quorvin.socket"_s)));
    ASSERT_TRUE(first.isFirst());
    SingleInstance later(directory.path());
    EXPECT_FALSE(later.isFirst());
}

TEST_F(SingleInstanceTest, WithoutADirectoryTheProgramRunsAllTheSame) {
    SingleInstance homeless(directory.filePath(u"not/there"_s));
    EXPECT_TRUE(homeless.isFirst());
}
