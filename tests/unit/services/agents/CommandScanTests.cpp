#include "services/agents/CommandProcessTable.h"
#include "services/agents/SessionScan.h"

#include <map>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// Whole scans by commands whose outputs the test writes; every other command can't be started.
class CommandScanTest : public ::testing::Test {
protected:
    AgentSessions scan() {
        CommandProcessTable table(
            [this](const QString& program, const QStringList& arguments) {
                const QString line = program + u' ' + arguments.join(u' ');
                lines.append(line);
                const auto found = outputs.find(line);
                return found == outputs.end() ? std::nullopt : std::optional(found->second);
            },
            macProcessTools());
        return scanSessions(table, running);
    }

    void list(const QByteArray& rows) { outputs[ps] = "  PID COMM             TTY\n" + rows; }

    const QString ps = u"/bin/ps -ax -o pid,comm,tty"_s;
    std::map<QString, QByteArray> outputs;
    QStringList lines; // what was run, in order
    std::vector<RunningApplication> running;
};

} // namespace

TEST_F(CommandScanTest, AHeaderLineAloneHasNoSessions) {
    list("");
    const AgentSessions found = scan();
    EXPECT_THAT(found.claude, IsEmpty());
    EXPECT_THAT(found.opencode, IsEmpty());
    EXPECT_EQ(lines, QStringList{ps});
}

TEST_F(CommandScanTest, WithoutPsThereAreNoSessions) {
    const AgentSessions found = scan();
    EXPECT_THAT(found.claude, IsEmpty());
    EXPECT_THAT(found.opencode, IsEmpty());
}

TEST_F(CommandScanTest, ARowWithoutATerminalIsDropped) {
    list("  100 claude           ??\n"
         "  101 claude\n"
         "  102 opencode         ??\n");
    const AgentSessions found = scan();
    EXPECT_THAT(found.claude, IsEmpty());
    EXPECT_THAT(found.opencode, IsEmpty());
}

TEST_F(CommandScanTest, ABlankInAPathMakesATerminalOfTheRest) {
    list("  100 /opt/claude code/bin/node ttys001\n");
    const AgentSessions found = scan();
    ASSERT_EQ(found.claude.size(), 1);
    EXPECT_EQ(found.claude[0].tty, u"/dev/code/bin/node"_s);
}

TEST_F(CommandScanTest, AnEmptyReplyOfLsofLeavesTheProcessForATitle) {
    list("  100 claude           ttys001\n");
    outputs[u"/usr/sbin/lsof -a -p 100 -d cwd -Fn"_s] = "";
    const AgentSessions found = scan();
    ASSERT_EQ(found.claude.size(), 1);
    EXPECT_EQ(found.claude[0].title, u"claude (pid 100)"_s);
    EXPECT_EQ(found.claude[0].terminalBundleID, std::nullopt);
}

TEST_F(CommandScanTest, TheCommandsOfAScanComeInThisOrder) {
    running = {{60, std::nullopt, u"org.alacritty"_s}};
    list("  100 claude           ttys001\n"
         "  101 bash             ttys002\n"
         "  102 opencode         ttys002\n");
    outputs[u"/usr/sbin/lsof -a -p 100 -d cwd -Fn"_s] = "p100\nfcwd\nn/home/me/first\n";
    outputs[u"/usr/sbin/lsof -t /dev/ttys001"_s] = "98\n99\n100\n";
    outputs[u"/bin/ps -p 98 -o ppid="_s] = "    1\n";
    outputs[u"/bin/ps -p 99 -o ppid="_s] = "   60\n";
    outputs[u"/usr/sbin/lsof -a -p 102 -d cwd -Fn"_s] = "p102\nfcwd\nn/\n";
    const AgentSessions found = scan();
    EXPECT_EQ(lines,
              (QStringList{ps, u"/usr/sbin/lsof -a -p 100 -d cwd -Fn"_s,
                           u"/usr/sbin/lsof -t /dev/ttys001"_s, u"/bin/ps -p 98 -o ppid="_s,
                           u"/bin/ps -p 99 -o ppid="_s, u"/usr/sbin/lsof -a -p 102 -d cwd -Fn"_s,
                           u"/usr/sbin/lsof -t /dev/ttys002"_s}));
    EXPECT_THAT(found.claude,
                ElementsAre(AgentSessionInfo{.id = 100,
                                             .pid = 100,
                                             .type = AgentType::claude,
                                             .title = u"first"_s,
                                             .tty = u"/dev/ttys001"_s,
                                             .terminalBundleID = u"org.alacritty"_s}));
    EXPECT_THAT(found.opencode,
                ElementsAre(AgentSessionInfo{.id = 102,
                                             .pid = 102,
                                             .type = AgentType::opencode,
                                             .title = u"opencode (pid 102)"_s,
                                             .tty = u"/dev/ttys002"_s,
                                             .terminalBundleID = u"org.alacritty"_s}));
}
