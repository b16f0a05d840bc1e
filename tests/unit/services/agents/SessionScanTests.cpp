#include "services/agents/SessionScan.h"
#include "support/fakes/FakeProcessTable.h"

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class SessionScanTest : public ::testing::Test {
protected:
    void add(ProcessID pid, const QString& command, const std::optional<QString>& terminal) {
        processes.rows.push_back({pid, command, terminal});
    }

    AgentSessions scan() {
        FakeProcessTable table(processes);
        return scanSessions(table, running);
    }

    /// The agent that a process called `command` is taken for, if for one.
    static std::optional<AgentType> agentOf(const QString& command) {
        FakeProcesses alone;
        alone.rows = {{7, command, u"pts/0"_s}};
        FakeProcessTable table(alone);
        const AgentSessions found = scanSessions(table, {});
        EXPECT_LE(found.claude.size() + found.opencode.size(), 1);
        if (!found.claude.isEmpty()) {
            return found.claude[0].type;
        }
        return found.opencode.isEmpty() ? std::nullopt : std::optional(found.opencode[0].type);
    }

    QString titleOf(const std::optional<QString>& workingDirectory) {
        processes = {};
        add(4711, u"opencode"_s, u"pts/0"_s);
        if (workingDirectory) {
            processes.workingDirectories[4711] = *workingDirectory;
        }
        return scan().opencode.value(0).title;
    }

    static QList<ProcessID> pids(const QList<AgentSessionInfo>& sessions) {
        QList<ProcessID> result;
        for (const AgentSessionInfo& session : sessions) {
            result.append(session.pid);
        }
        return result;
    }

    FakeProcesses processes;
    std::vector<RunningApplication> running;
};

} // namespace

TEST_F(SessionScanTest, ASessionTellsWhatIsKnownOfIt) {
    running = {{60, std::nullopt, u"org.alacritty"_s}};
    add(100, u"/home/me/.local/bin/claude"_s, u"pts/3"_s);
    processes.workingDirectories[100] = u"/home/me/quorvin"_s;
    processes.holders[u"/dev/pts/3"_s] = {90, 100};
    processes.parents = {{90, 60}, {100, 90}};
    const AgentSessionInfo expected{.id = 100,
                                    .pid = 100,
                                    .type = AgentType::claude,
                                    .title = u"quorvin"_s,
                                    .tty = u"/dev/pts/3"_s,
                                    .terminalBundleID = u"org.alacritty"_s};
    EXPECT_THAT(scan().claude, ElementsAre(expected));
    EXPECT_THAT(scan().opencode, IsEmpty());
}

TEST_F(SessionScanTest, ATableThatCannotBeReadHasNoSessions) {
    add(100, u"claude"_s, u"pts/3"_s);
    processes.areReadable = false;
    EXPECT_THAT(scan().claude, IsEmpty());
    EXPECT_THAT(scan().opencode, IsEmpty());
}

TEST_F(SessionScanTest, AnEmptyTableHasNoSessions) {
    EXPECT_THAT(scan().claude, IsEmpty());
    EXPECT_THAT(scan().opencode, IsEmpty());
}

TEST_F(SessionScanTest, KnowsTheAgentsByTheirNames) {
    for (const auto& name : {u"claude"_s, u"claude-code"_s, u"claude_code"_s, u"CLAUDE"_s,
                             u"/opt/Claude Code/bin/Claude-Code"_s, u"bin/claude/"_s}) {
        EXPECT_EQ(agentOf(name), AgentType::claude) << qUtf8Printable(name);
    }
    for (const auto& name : {u"opencode"_s, u"open-code"_s, u"open_code"_s, u"OpenCode"_s}) {
        EXPECT_EQ(agentOf(name), AgentType::opencode) << qUtf8Printable(name);
    }
}

TEST_F(SessionScanTest, ANameMayGoOn) {
    EXPECT_EQ(agentOf(u"claude-code-x"_s), AgentType::claude);
    EXPECT_EQ(agentOf(u"claude2"_s), AgentType::claude);
    EXPECT_EQ(agentOf(u"opencode-tui"_s), AgentType::opencode);
}

TEST_F(SessionScanTest, OnlyTheHelpersOfClaudeAreLeftOut) {
    EXPECT_EQ(agentOf(u"claude-helper"_s), std::nullopt);
    EXPECT_EQ(agentOf(u"Claude-X-HELPER"_s), std::nullopt);
    EXPECT_EQ(agentOf(u"/opt/helper/claude"_s), AgentType::claude);
    EXPECT_EQ(agentOf(u"opencode-helper"_s), AgentType::opencode);
}

TEST_F(SessionScanTest, OtherNamesAreNoAgents) {
    for (const auto& name : {u"bash"_s, u"clau"_s, u"my-claude"_s, u"open-code-x"_s,
                             u"open_codes"_s, u"/claude/node"_s, u"(claude)"_s, u"/"_s}) {
        EXPECT_EQ(agentOf(name), std::nullopt) << qUtf8Printable(name);
    }
}

TEST_F(SessionScanTest, AnAgentWithoutATerminalIsDropped) {
    add(100, u"claude"_s, std::nullopt);
    EXPECT_THAT(scan().claude, IsEmpty());
}

TEST_F(SessionScanTest, TheFirstOfTwoAgentsOnATerminalStands) {
    add(100, u"claude"_s, u"pts/3"_s);
    add(101, u"opencode"_s, u"pts/3"_s);
    add(102, u"claude"_s, u"pts/3"_s);
    EXPECT_THAT(pids(scan().claude), ElementsAre(100));
    EXPECT_THAT(scan().opencode, IsEmpty());
}

TEST_F(SessionScanTest, OnlyAgentsTakeATerminal) {
    add(90, u"bash"_s, u"pts/3"_s);
    add(91, u"claude-helper"_s, u"pts/3"_s);
    add(100, u"opencode"_s, u"pts/3"_s);
    EXPECT_THAT(pids(scan().opencode), ElementsAre(100));
}

TEST_F(SessionScanTest, SessionsKeepTheOrderOfTheTable) {
    add(300, u"claude"_s, u"pts/3"_s);
    add(20, u"opencode"_s, u"pts/1"_s);
    add(100, u"claude"_s, u"pts/2"_s);
    add(10, u"opencode"_s, u"pts/0"_s);
    EXPECT_THAT(pids(scan().claude), ElementsAre(300, 100));
    EXPECT_THAT(pids(scan().opencode), ElementsAre(20, 10));
}

TEST_F(SessionScanTest, TheTitleIsTheNameOfTheWorkingDirectory) {
    EXPECT_EQ(titleOf(u"/home/me/my project"_s), u"my project"_s);
    EXPECT_EQ(titleOf(u"/home/me/project/"_s), u"project"_s);
    EXPECT_EQ(titleOf(u"/project"_s), u"project"_s);
}

TEST_F(SessionScanTest, WithoutAUsefulDirectoryTheTitleNamesTheProcess) {
    EXPECT_EQ(titleOf(u"/"_s), u"opencode (pid 4711)"_s);
    EXPECT_EQ(titleOf(u""_s), u"opencode (pid 4711)"_s);
    EXPECT_EQ(titleOf(u"//"_s), u"opencode (pid 4711)"_s);
    EXPECT_EQ(titleOf(u"/home/unknown"_s), u"opencode (pid 4711)"_s);
}

TEST_F(SessionScanTest, AnAgentThatHasJustEndedIsStillASession) {
    running = {{60, std::nullopt, u"org.alacritty"_s}};
    add(4712, u"claude"_s, u"pts/0"_s); // neither a directory nor a holder of the terminal any more
    const AgentSessionInfo expected{.id = 4712,
                                    .pid = 4712,
                                    .type = AgentType::claude,
                                    .title = u"claude (pid 4712)"_s,
                                    .tty = u"/dev/pts/0"_s,
                                    .terminalBundleID = u"org.alacritty"_s};
    EXPECT_THAT(scan().claude, ElementsAre(expected));
}

TEST_F(SessionScanTest, WithoutAMatchEverySessionBelongsToTheFirstTerminalOfTheTable) {
    running = {{50, std::nullopt, u"com.apple.Terminal"_s},
               {60, std::nullopt, u"com.googlecode.iterm2"_s}};
    add(100, u"claude"_s, u"pts/0"_s);
    add(101, u"opencode"_s, u"pts/1"_s);
    EXPECT_EQ(scan().claude.value(0).terminalBundleID, u"com.googlecode.iterm2"_s);
    EXPECT_EQ(scan().opencode.value(0).terminalBundleID, u"com.googlecode.iterm2"_s);
}

TEST_F(SessionScanTest, ASessionIsListedEvenIfNoTerminalRuns) {
    add(100, u"claude"_s, u"pts/0"_s);
    EXPECT_THAT(pids(scan().claude), ElementsAre(100));
    EXPECT_EQ(scan().claude.value(0).terminalBundleID, std::nullopt);
}
