#include "platform/linux/posix/BlockingCommand.h"

#include <QStringList>

#include <thread>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<QByteArray> shell(const QString& script) {
    return runAndWaitForOutput(u"/bin/sh"_s, {u"-c"_s, script});
}

} // namespace

TEST(BlockingCommand, GivesTheStandardOutput) {
    EXPECT_EQ(runAndWaitForOutput(u"/bin/echo"_s, {u"a b"_s, u"c"_s}), "a b c\n");
}

TEST(BlockingCommand, NeitherTheErrorOutputNorTheExitStatusMatters) {
    EXPECT_EQ(shell(u"echo out; echo error >&2; exit 3"_s), "out\n");
    EXPECT_EQ(shell(u"echo out; kill -9 $$"_s), "out\n");
}

TEST(BlockingCommand, AChildMayWriteMoreThanAPipeHolds) {
    const auto output = shell(u"head -c 300000 /dev/zero >&2; head -c 300000 /dev/zero;"
                              " head -c 300000 /dev/zero >&2"_s);
    ASSERT_TRUE(output);
    EXPECT_EQ(output->size(), 300000);
}

TEST(BlockingCommand, TheInputIsEmpty) {
    EXPECT_EQ(runAndWaitForOutput(u"/bin/cat"_s, {}), "");
}

TEST(BlockingCommand, AProgramThatCannotBeStartedHasNoOutput) {
    EXPECT_EQ(runAndWaitForOutput(u"/no/such/program"_s, {}), std::nullopt);
    EXPECT_EQ(runAndWaitForOutput(u"/etc/passwd"_s, {}), std::nullopt);
}

TEST(BlockingCommand, WorksOnEveryThread) {
    std::optional<QByteArray> output;
    std::thread([&output] { output = runAndWaitForOutput(u"/bin/echo"_s, {u"there"_s}); }).join();
    EXPECT_EQ(output, "there\n");
}
