// What every table of the real processes must do, whichever way it reads them.

#include "platform/linux/posix/BlockingCommand.h"
#include "platform/linux/procfs/ProcfsProcessTable.h"
#include "services/agents/CommandProcessTable.h"
#include "services/agents/SessionScan.h"
#include "support/SleepingProcess.h"
#include "unit/platform/linux/procfs/ContainedProcess.h"

#include <QDir>

#include <algorithm>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::ContainedProcess;
using quorvin::testing::SleepingProcess;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

struct Kind {
    const char* name;
    ProcessTableFactory make;
};

class ProcessTableTest : public ::testing::TestWithParam<Kind> {
protected:
    std::optional<ProcessRow> rowOf(const SleepingProcess& process) {
        const auto rows = table->rows();
        if (!rows) {
            return std::nullopt;
        }
        const auto found = std::find_if(rows->begin(), rows->end(), [&](const ProcessRow& row) {
            return row.processIdentifier == process.pid();
        });
        return found == rows->end() ? std::nullopt : std::optional(*found);
    }

    /// The working directory that is shown for a process in the folder `name`.
    std::optional<QString> shownDirectory(const QString& name) {
        const QString path = folder.filePath(name);
        EXPECT_TRUE(QDir().mkpath(path));
        const SleepingProcess process({.workingDirectory = path.toUtf8()});
        return table->workingDirectory(process.pid());
    }

    /// All that hold a terminal, in order.
    std::vector<ProcessID> holders(const QString& ttyPath) {
        std::vector<ProcessID> found;
        for (;;) {
            const auto next = table->firstHolder(ttyPath, [&found](ProcessID pid) {
                return std::find(found.begin(), found.end(), pid) == found.end();
            });
            if (!next) {
                return found;
            }
            found.push_back(*next);
        }
    }

    static QString belowDev(const SleepingProcess& process) {
        return process.ttyPath().mid(QStringView(u"/dev/").size());
    }

    QTemporaryDir folder;
    std::unique_ptr<ProcessTable> table = GetParam().make();
};

INSTANTIATE_TEST_SUITE_P(
    , ProcessTableTest,
    ::testing::Values(Kind{"Procfs", [] { return std::make_unique<ProcfsProcessTable>(); }},
                      Kind{"Command",
                           [] {
                               return std::make_unique<CommandProcessTable>(runAndWaitForOutput,
                                                                            linuxProcessTools());
                           }}),
    [](const auto& kind) { return kind.param.name; });

} // namespace

TEST_P(ProcessTableTest, ARowHoldsNameAndTerminal) {
    const SleepingProcess process({.name = "claude"});
    EXPECT_EQ(rowOf(process), (ProcessRow{process.pid(), u"claude"_s, belowDev(process)}));
}

TEST_P(ProcessTableTest, AProcessWithoutATerminalHasNone) {
    const SleepingProcess process({.name = "claude", .hasTerminal = false});
    EXPECT_EQ(rowOf(process), (ProcessRow{process.pid(), u"claude"_s, std::nullopt}));
}

TEST_P(ProcessTableTest, AnOpenTerminalIsNotAControllingOne) {
    const SleepingProcess owner({});
    const SleepingProcess process({.hasTerminal = false, .openTerminal = owner.ttyPath()});
    EXPECT_EQ(rowOf(process), (ProcessRow{process.pid(), u"sleeper"_s, std::nullopt}));
}

TEST_P(ProcessTableTest, AParenthesisInANameIsPartOfIt) {
    const SleepingProcess process({.name = "claude)(x"});
    EXPECT_EQ(rowOf(process), (ProcessRow{process.pid(), u"claude)(x"_s, belowDev(process)}));
}

TEST_P(ProcessTableTest, ABlankInANameShiftsTheColumns) {
    const SleepingProcess process({.name = "claude  code x"});
    EXPECT_EQ(rowOf(process), (ProcessRow{process.pid(), u"claude"_s, u"code"_s}));
}

TEST_P(ProcessTableTest, ANameStandsOnOneLine) {
    const SleepingProcess process({.name = "a\nb\x01"});
    EXPECT_EQ(rowOf(process), (ProcessRow{process.pid(), u"a?b?"_s, belowDev(process)}));
}

TEST_P(ProcessTableTest, ALongNameIsCutByTheSystem) {
    const SleepingProcess process({.name = "claude-code-with-a-tail"});
    EXPECT_EQ(rowOf(process), (ProcessRow{process.pid(), u"claude-code-wit"_s, belowDev(process)}));
}

TEST_P(ProcessTableTest, AProcessThatNobodyCollectedIsStillListed) {
    const SleepingProcess process({.name = "claude"});
    process.end();
    EXPECT_EQ(rowOf(process), (ProcessRow{process.pid(), u"claude"_s, std::nullopt}));
    EXPECT_EQ(table->workingDirectory(process.pid()), std::nullopt);
    EXPECT_EQ(table->parent(process.pid()), getpid());
}

TEST_P(ProcessTableTest, RowsStandInTheOrderOfTheirNumbers) {
    const auto rows = table->rows();
    ASSERT_TRUE(rows);
    ASSERT_GT(rows->size(), 1U);
    EXPECT_TRUE(std::is_sorted(rows->begin(), rows->end(), [](const auto& left, const auto& right) {
        return left.processIdentifier < right.processIdentifier;
    }));
}

TEST_P(ProcessTableTest, AWorkingDirectoryIsAWholePath) {
    EXPECT_EQ(shownDirectory(u"my project"_s), folder.filePath(u"my project"_s));
}

TEST_P(ProcessTableTest, AWorkingDirectoryStandsOnOneLine) {
    EXPECT_EQ(shownDirectory(u"a\nb\tc\\d\x01"
                             "e"_s),
              folder.filePath(u"a\\nb\\tc\\\\d^Ae"_s));
}

TEST_P(ProcessTableTest, ARemovedWorkingDirectoryIsMarked) {
    const QString path = folder.filePath(u"gone"_s);
    ASSERT_TRUE(QDir().mkpath(path));
    const SleepingProcess process({.workingDirectory = path.toUtf8()});
    ASSERT_TRUE(QDir().rmdir(path));
    EXPECT_EQ(table->workingDirectory(process.pid()), path + u" (deleted)"_s);
}

TEST_P(ProcessTableTest, TheRootIsAWorkingDirectoryToo) {
    const SleepingProcess process({.workingDirectory = "/"});
    EXPECT_EQ(table->workingDirectory(process.pid()), u"/"_s);
}

TEST_P(ProcessTableTest, AProcessThatHasEndedHasNoDirectoryAndNoParent) {
    ProcessID pid = 0;
    {
        const SleepingProcess process({});
        pid = process.pid();
    }
    EXPECT_EQ(table->workingDirectory(pid), std::nullopt);
    EXPECT_EQ(table->parent(pid), std::nullopt);
}

TEST_P(ProcessTableTest, HoldersAreAllWhoHaveATerminalOpen) {
    const SleepingProcess owner({});
    const SleepingProcess stranger({.hasTerminal = false, .openTerminal = owner.ttyPath()});
    const SleepingProcess elsewhere({.openTerminal = owner.ttyPath()});
    const SleepingProcess unrelated({});
    std::vector<ProcessID> expected{owner.pid(), stranger.pid(), elsewhere.pid()};
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(holders(owner.ttyPath()), expected);
    EXPECT_THAT(holders(unrelated.ttyPath()), ElementsAre(unrelated.pid()));
    EXPECT_EQ(
        table->firstHolder(owner.ttyPath(), [&](ProcessID pid) { return pid != expected[0]; }),
        expected[1]);
}

TEST_P(ProcessTableTest, AContainersTerminalOfTheSameNameIsAnother) {
    const SleepingProcess owner({});
    const ContainedProcess container(owner.ttyPath());
    if (!container.isRunning()) {
        GTEST_SKIP() << "Only the administrator may make a container";
    }
    EXPECT_THAT(holders(owner.ttyPath()), ElementsAre(owner.pid()));
}

TEST_P(ProcessTableTest, NobodyHoldsATerminalThatIsNotThere) {
    EXPECT_THAT(holders(u"/dev/pts/1048575"_s), IsEmpty());
    EXPECT_THAT(holders(u"/dev/code"_s), IsEmpty());
}

TEST_P(ProcessTableTest, AProcessYoungerThanTheRowsHasAParentToo) {
    std::ignore = table->rows();
    const SleepingProcess process({});
    EXPECT_EQ(table->parent(process.pid()), getpid());
}

TEST_P(ProcessTableTest, TheParentIsWhoStartedAProcess) {
    const SleepingProcess process({});
    EXPECT_EQ(table->parent(process.pid()), getpid());
    EXPECT_EQ(table->parent(1), 0);
}

TEST_P(ProcessTableTest, AScanFindsTheAgentsOfATerminal) {
    const QString project = folder.filePath(u"project"_s);
    ASSERT_TRUE(QDir().mkpath(project));
    const SleepingProcess first({.name = "claude", .workingDirectory = project.toUtf8()});
    const SleepingProcess second({.name = "opencode"});
    const SleepingProcess helper({.name = "claude-helper"});
    const SleepingProcess unattended({.name = "claude", .hasTerminal = false});
    AgentSessions found =
        scanSessions(*table, {{getpid(), std::nullopt, u"net.kovidgoyal.kitty"_s}});
    // Others may work on this machine.
    for (QList<AgentSessionInfo>* sessions : {&found.claude, &found.opencode}) {
        sessions->removeIf([this](const AgentSessionInfo& session) {
            return table->parent(session.pid) != getpid();
        });
    }
    EXPECT_THAT(found.claude,
                ElementsAre(AgentSessionInfo{.id = first.pid(),
                                             .pid = first.pid(),
                                             .type = AgentType::claude,
                                             .title = u"project"_s,
                                             .tty = first.ttyPath(),
                                             .terminalBundleID = u"net.kovidgoyal.kitty"_s}));
    EXPECT_THAT(found.opencode,
                ElementsAre(AgentSessionInfo{.id = second.pid(),
                                             .pid = second.pid(),
                                             .type = AgentType::opencode,
                                             .title = u"opencode (pid %1)"_s.arg(second.pid()),
                                             .tty = second.ttyPath(),
                                             .terminalBundleID = u"net.kovidgoyal.kitty"_s}));
}
