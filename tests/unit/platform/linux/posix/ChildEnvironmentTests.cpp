// What a child finds when it begins.

#include "ProcessRunnerFixture.h"

#include <array>
#include <csignal>
#include <cstdint>

#include <fcntl.h>
#include <unistd.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::eventually;

namespace {

class ChildEnvironment : public quorvin::testing::ProcessRunnerTest {};

/// A set of signals in the text of /proc/<id>/status, those that the C library keeps for itself
/// left out.
std::uint64_t signalSet(const QByteArray& status, const QByteArray& name) {
    const qsizetype begin = status.indexOf(name + ":\t") + name.size() + 2;
    const QByteArray digits = status.mid(begin, status.indexOf('\n', begin) - begin);
    EXPECT_EQ(digits.size(), 16);
    constexpr std::uint64_t reserved = 0x180000000; // 32 and 33
    return digits.toULongLong(nullptr, 16) & ~reserved;
}

} // namespace

TEST_F(ChildEnvironment, ArgumentsArriveUnchanged) {
    const QStringList arguments{u""_s,
                                u"a b"_s,
                                u"'single' \"double\" `back` $HOME $(id) * ? ; & | > \\"_s,
                                u"line\nbreak\r\n\ttab"_s,
                                u"grüße 👩‍👩‍👧"_s,
                                u"'\"\n$"_s.repeated(2500)};
    ASSERT_EQ(arguments.last().size(), 10000);
    const ProcessResult result = run(u"/usr/bin/printf"_s, QStringList{u"%s\\0"_s} + arguments);
    EXPECT_EQ(result.standardOutput, arguments.join(QChar(0)).toUtf8() + '\0');
}

TEST_F(ChildEnvironment, TheEnvironmentIsACopy) {
    ASSERT_TRUE(qputenv("QUORVIN_TEST_VALUE", "a value\nof two lines"));
    const ProcessResult result = runShell(u"printf %s \"$QUORVIN_TEST_VALUE\""_s);
    qunsetenv("QUORVIN_TEST_VALUE");
    EXPECT_EQ(result.standardOutput, "a value\nof two lines"_ba);
}

TEST_F(ChildEnvironment, StandardInputIsEmpty) {
    EXPECT_EQ(run(u"/bin/cat"_s, {}).standardOutput, ""_ba);
    EXPECT_EQ(run(u"/usr/bin/readlink"_s, {u"/proc/self/fd/0"_s}).standardOutput, "/dev/null\n"_ba);
}

TEST_F(ChildEnvironment, NoOtherDescriptorIsInherited) {
    const int leaky = ::open("/dev/zero", O_RDONLY); // NOLINT: without O_CLOEXEC on purpose
    ASSERT_NE(leaky, -1);
    const auto running = start(u"/bin/sleep"_s, {u"1000"_s}); // its pipes are open here now
    const ProcessResult result = run(u"/bin/ls"_s, {u"-l"_s, u"/proc/self/fd"_s});
    ::close(leaky);
    // "total", the standard three, and the directory that is being read
    EXPECT_EQ(result.standardOutput.trimmed().count('\n'), 4) << result.standardOutput.constData();
    EXPECT_FALSE(result.standardOutput.contains("/dev/zero"));
}

TEST_F(ChildEnvironment, NoSignalIsBlockedOrIgnored) {
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGUSR1);
    ASSERT_EQ(::pthread_sigmask(SIG_BLOCK, &blocked, &before), 0);
    const auto pipeHandler = ::signal(SIGPIPE, SIG_IGN);
    const ProcessResult result = run(u"/bin/cat"_s, {u"/proc/self/status"_s});
    ::signal(SIGPIPE, pipeHandler);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    EXPECT_EQ(signalSet(result.standardOutput, "SigBlk"), 0U);
    EXPECT_EQ(signalSet(result.standardOutput, "SigIgn"), 0U);
}

TEST_F(ChildEnvironment, ExitCodesSurviveAnInheritedIgnoredSignal) {
    const auto handler = ::signal(SIGCHLD, SIG_IGN);
    runner = std::make_unique<PosixProcessRunner>(scheduler);
    EXPECT_EQ(runShell(u"exit 5"_s).exitStatus, 5);
    ::signal(SIGCHLD, handler);
}

TEST_F(ChildEnvironment, AnExitCodeThatTheSystemHasDroppedIsNoSuccess) {
    const auto handler = ::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(runShell(u"exit 0"_s).exitStatus, -1);
    ::signal(SIGCHLD, handler);
}

TEST_F(ChildEnvironment, AProgramWithoutStandardDescriptorsCanStillRunChildren) {
    std::array<int, 3> saved{};
    for (int i = 0; i < 3; ++i) {
        saved.at(static_cast<std::size_t>(i)) = ::fcntl(i, F_DUPFD_CLOEXEC, 100);
        ::close(i);
    }
    const auto outcome = startShell(u"echo out; echo err >&2"_s);
    for (int i = 0; i < 3; ++i) {
        ::dup2(saved.at(static_cast<std::size_t>(i)), i);
        ::close(saved.at(static_cast<std::size_t>(i)));
    }
    ASSERT_TRUE(eventually([&] { return outcome->result.has_value(); }));
    EXPECT_EQ(outcome->result->exitStatus, 0);
    EXPECT_EQ(outcome->result->standardOutput, "out\n"_ba);
    EXPECT_EQ(outcome->result->standardError, "err\n"_ba);
}
