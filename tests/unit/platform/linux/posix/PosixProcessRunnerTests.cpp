#include "ProcessRunnerFixture.h"

#include <QDir>
#include <QElapsedTimer>

#include <csignal>

#include <sys/resource.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::eventually;

namespace {

class RealChildren : public quorvin::testing::ProcessRunnerTest {
protected:
    /// The letter that the system gives the state of a process; 0 when there is no such process.
    static char stateOf(const QByteArray& id) {
        QFile file(u"/proc/%1/stat"_s.arg(QString::fromUtf8(id.trimmed())));
        if (!file.open(QIODevice::ReadOnly)) {
            return 0;
        }
        const QByteArray line = file.readAll();
        return line.at(line.lastIndexOf(')') + 2);
    }

    static uint openDescriptors() { return QDir(u"/proc/self/fd"_s).count(); }

    /// Starts a child that first writes its process id to the file "id", then becomes `command`.
    std::shared_ptr<Outcome> startNamed(const QString& command) {
        auto outcome = startShell(u"echo $$ > '%1' && exec %2"_s.arg(filePath(u"id"_s), command));
        EXPECT_TRUE(eventually([this] { return fileContents(u"id"_s).endsWith('\n'); }));
        return outcome;
    }
};

} // namespace

TEST_F(RealChildren, TheResultHoldsBothOutputsAndTheExitCode) {
    const ProcessResult result = runShell(u"echo out; echo err >&2; exit 3"_s);
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_EQ(result.standardOutput, "out\n"_ba);
    EXPECT_EQ(result.standardError, "err\n"_ba);
}

TEST_F(RealChildren, AChildWithoutOutputSucceeds) {
    const ProcessResult result = run(u"/bin/true"_s, {});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_TRUE(result.standardOutput.isEmpty());
    EXPECT_TRUE(result.standardError.isEmpty());
}

TEST_F(RealChildren, ASignalGivesItsNumber) {
    EXPECT_EQ(runShell(u"kill -TERM $$"_s).exitStatus, SIGTERM);
}

TEST_F(RealChildren, ResultsComeThroughTheEventLoopOnly) {
    const auto outcome = start(u"/bin/true"_s, {});
    EXPECT_FALSE(outcome->result);
    EXPECT_TRUE(eventually([&] { return outcome->result.has_value(); }));
}

TEST_F(RealChildren, AMissingProgramIsALaunchError) {
    const auto outcome = start(filePath(u"missing"_s), {});
    EXPECT_EQ(outcome->launchError, "No such file or directory");
}

TEST_F(RealChildren, AFileThatCannotRunIsALaunchError) {
    QFile file(filePath(u"data"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const auto outcome = start(file.fileName(), {});
    EXPECT_EQ(outcome->launchError, "Permission denied");
}

TEST_F(RealChildren, AScriptWithoutInterpreterIsNotGivenToAShell) {
    QFile file(filePath(u"script"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("echo from a shell\n");
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    file.close();
    EXPECT_EQ(start(file.fileName(), {})->launchError, "Exec format error");
}

TEST_F(RealChildren, TooFewDescriptorsAreALaunchErrorThatLeaksNone) {
    // The undefined-behaviour sanitizer needs a pipe for each class that it meets for the first
    // time, so let it meet those of a failure and of a success now.
    (void)start(u"/does/not/exist"_s, {});
    (void)run(u"/bin/true"_s, {});
    const auto before = openDescriptors();
    rlimit normal{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &normal), 0);
    int failures = 0;
    std::shared_ptr<Outcome> outcome;
    do {
        const rlimit narrow{static_cast<rlim_t>(3 + failures), normal.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &narrow), 0);
        outcome = start(u"/bin/true"_s, {});
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &normal), 0);
        if (outcome->launchError) {
            ASSERT_EQ(outcome->launchError, "Too many open files");
            ASSERT_EQ(openDescriptors(), before);
            ++failures;
        }
    } while (outcome->launchError);
    EXPECT_GE(failures, 5);
    EXPECT_TRUE(eventually([&] { return outcome->result.has_value(); }));
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(RealChildren, FinishedRunsKeepNoDescriptors) {
    (void)run(u"/bin/true"_s, {});
    const auto before = openDescriptors();
    for (int i = 0; i < 20; ++i) {
        (void)run(u"/bin/true"_s, {});
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(RealChildren, ManyChildrenRunAtOnce) {
    std::vector<std::shared_ptr<Outcome>> outcomes;
    for (int i = 0; i < 30; ++i) {
        outcomes.push_back(startShell(u"echo %1; exit %1"_s.arg(i)));
    }
    for (int i = 0; i < 30; ++i) {
        const auto& outcome = outcomes.at(static_cast<std::size_t>(i));
        ASSERT_TRUE(eventually([&] { return outcome->result.has_value(); }));
        EXPECT_EQ(outcome->result->exitStatus, i);
        EXPECT_EQ(outcome->result->standardOutput.trimmed(), QByteArray::number(i));
    }
}

TEST_F(RealChildren, AHangingChildHoldsUpNoOther) {
    const auto hanging = start(u"/bin/sleep"_s, {u"1000"_s});
    EXPECT_EQ(runShell(u"echo other"_s).standardOutput, "other\n"_ba);
    EXPECT_FALSE(hanging->result);
}

TEST_F(RealChildren, OutputThatAPipeHoldsArrivesWhole) {
    EXPECT_EQ(run(u"/usr/bin/head"_s, {u"-c"_s, u"65536"_s, u"/dev/zero"_s}).standardOutput,
              QByteArray(65536, '\0'));
}

TEST_F(RealChildren, OutputBeyondThePipeHangsUntilTheRunnerGoes) {
    // Deliberate: the pipes are read after the end only.
    const auto outcome = startNamed(u"head -c 65537 /dev/zero"_s);
    // This program sleeps for nothing but room in the pipe.
    ASSERT_TRUE(eventually([this] { return stateOf(fileContents(u"id"_s)) == 'S'; }));
    EXPECT_FALSE(outcome->result);
    runner.reset();
    EXPECT_EQ(stateOf(fileContents(u"id"_s)), 0);
    ASSERT_TRUE(eventually([&] { return outcome->result.has_value(); }));
    EXPECT_EQ(outcome->result->exitStatus, SIGKILL);
}

TEST_F(RealChildren, DestructionKillsAndCollectsTheChildren) {
    const auto first = startNamed(u"sleep 1000"_s);
    const auto second = start(u"/bin/sleep"_s, {u"1000"_s});
    QElapsedTimer time;
    time.start();
    runner.reset();
    EXPECT_LT(time.elapsed(), 2000);
    EXPECT_EQ(stateOf(fileContents(u"id"_s)), 0);
    EXPECT_FALSE(first->result);
    ASSERT_TRUE(eventually([&] { return first->result && second->result; }));
    EXPECT_EQ(first->result->exitStatus, SIGKILL);
    EXPECT_EQ(second->result->exitStatus, SIGKILL);
}

TEST_F(RealChildren, DestructionDoesNotWaitForAGrandchildThatHoldsThePipes) {
    const auto outcome = startNamed(
        u"sh -c 'sleep 1000 & echo $! > \"%1\"; echo text'"_s.arg(filePath(u"grandchild"_s)));
    ASSERT_TRUE(eventually([this] { return stateOf(fileContents(u"id"_s)) == 0; }));
    const QByteArray grandchild = fileContents(u"grandchild"_s).trimmed();
    EXPECT_FALSE(outcome->result);
    QElapsedTimer time;
    time.start();
    runner.reset();
    EXPECT_LT(time.elapsed(), 2000);
    ASSERT_TRUE(eventually([&] { return outcome->result.has_value(); }));
    EXPECT_EQ(outcome->result->exitStatus, SIGKILL);
    EXPECT_EQ(::kill(grandchild.toInt(), SIGKILL), 0);
}

TEST_F(RealChildren, OutputOfAGrandchildIsWaitedFor) {
    const QString fifo = filePath(u"fifo"_s);
    const auto outcome =
        startShell(u"mkfifo '%1'; (read line < '%1'; echo late) & echo early"_s.arg(fifo));
    ASSERT_TRUE(eventually([&] { return QFile::exists(fifo); }));
    EXPECT_FALSE(outcome->result);
    (void)runShell(u"echo go > '%1'"_s.arg(fifo));
    ASSERT_TRUE(eventually([&] { return outcome->result.has_value(); }));
    EXPECT_EQ(outcome->result->standardOutput, "early\nlate\n"_ba);
}

TEST_F(RealChildren, ARunEndsInTheSchedulersDestructorWhenNobodyRunsTheLoop) {
    auto own = std::make_unique<QtScheduler>();
    runner = std::make_unique<PosixProcessRunner>(*own);
    const auto outcome = start(u"/bin/sleep"_s, {u"1000"_s});
    runner.reset();
    own.reset();
    ASSERT_TRUE(outcome->result);
    EXPECT_EQ(outcome->result->exitStatus, SIGKILL);
}
