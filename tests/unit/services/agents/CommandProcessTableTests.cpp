#include "services/agents/CommandProcessTable.h"

#include <map>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// Commands whose outputs are written by the test; every other one can't be started.
class CommandProcessTableTest : public ::testing::Test {
protected:
    std::optional<QByteArray> run(const QString& program, const QStringList& arguments) {
        const QString line = program + u' ' + arguments.join(u' ');
        lines.append(line);
        const auto found = outputs.find(line);
        return found == outputs.end() ? std::nullopt : std::optional(found->second);
    }

    std::vector<ProcessRow> rowsOf(const QByteArray& listing) {
        outputs[ps] = listing;
        return table.rows().value();
    }

    static bool anyone(ProcessID /*pid*/) { return true; }

    const QString ps = u"/bin/ps -ax -o pid,comm,tty"_s;
    const QString lsofDirectory = u"/usr/sbin/lsof -a -p 7 -d cwd -Fn"_s;
    const QString lsofTTY = u"/usr/sbin/lsof -t /dev/ttys003"_s;
    const QString psParent = u"/bin/ps -p 7 -o ppid="_s;

    std::map<QString, QByteArray> outputs;
    QStringList lines; // what was run, in order
    CommandProcessTable table{[this](const QString& program, const QStringList& arguments) {
                                  return run(program, arguments);
                              },
                              macProcessTools()};
};

} // namespace

TEST_F(CommandProcessTableTest, RunsTheseCommandLines) {
    std::ignore = table.rows();
    std::ignore = table.workingDirectory(7);
    std::ignore = table.firstHolder(u"/dev/ttys003"_s, anyone);
    std::ignore = table.parent(7);
    EXPECT_EQ(lines, (QStringList{ps, lsofDirectory, lsofTTY, psParent}));
}

TEST_F(CommandProcessTableTest, ArgumentsAreNotDividedAtBlanks) {
    QStringList received;
    CommandProcessTable linuxTable(
        [&received](const QString& program, const QStringList& arguments) {
            received = QStringList{program} + arguments;
            return std::optional(QByteArray());
        },
        linuxProcessTools());
    std::ignore = linuxTable.firstHolder(u"/dev/a b"_s, anyone);
    EXPECT_EQ(received, (QStringList{u"/usr/bin/lsof"_s, u"-t"_s, u"/dev/a b"_s}));
}

TEST_F(CommandProcessTableTest, WhereNothingCanBeStartedNothingIsKnown) {
    EXPECT_EQ(table.rows(), std::nullopt);
    EXPECT_EQ(table.workingDirectory(7), std::nullopt);
    EXPECT_EQ(table.firstHolder(u"/dev/ttys003"_s, anyone), std::nullopt);
    EXPECT_EQ(table.parent(7), std::nullopt);
}

TEST_F(CommandProcessTableTest, TheHeaderLineIsNoRow) {
    EXPECT_THAT(rowsOf("  PID COMM             TTY\n"), IsEmpty());
}

TEST_F(CommandProcessTableTest, RowsKeepTheirOrder) {
    EXPECT_THAT(rowsOf("  PID COMM             TTY\n"
                       "   90 /usr/bin/claude  ttys003\n"
                       "    1 /sbin/launchd    ??\n"
                       "   12 claude           ?\n"),
                ElementsAre(ProcessRow{90, u"/usr/bin/claude"_s, u"ttys003"_s},
                            ProcessRow{1, u"/sbin/launchd"_s, std::nullopt},
                            ProcessRow{12, u"claude"_s, std::nullopt}));
}

TEST_F(CommandProcessTableTest, ColumnsAreTakenByPosition) {
    EXPECT_THAT(rowsOf("90 /Applications/My Claude/claude ttys003\n"
                       "91 claude\n"
                       "92\n"
                       "\n"),
                ElementsAre(ProcessRow{90, u"/Applications/My"_s, u"Claude/claude"_s},
                            ProcessRow{91, u"claude"_s, std::nullopt}));
}

TEST_F(CommandProcessTableTest, OnlyBlanksDivideColumns) {
    EXPECT_THAT(rowsOf("90\tclaude ttys003\n91 claude\tttys003\n"),
                ElementsAre(ProcessRow{91, u"claude\tttys003"_s, std::nullopt}));
}

TEST_F(CommandProcessTableTest, AProcessNumberIsADecimalNumberOf32Bits) {
    EXPECT_THAT(rowsOf("2147483647 a t\n2147483648 b t\n0x10 c t\n1.5 d t\n12a e t\n+-1 f t\n"),
                ElementsAre(ProcessRow{2147483647, u"a"_s, u"t"_s}));
    EXPECT_THAT(rowsOf("-5 a t\n+6 b t\n"),
                ElementsAre(ProcessRow{-5, u"a"_s, u"t"_s}, ProcessRow{6, u"b"_s, u"t"_s}));
}

TEST_F(CommandProcessTableTest, AListingThatIsNotUtf8IsAnEmptyOne) {
    EXPECT_THAT(rowsOf("90 cl\xc3\xa4ude t\n"), ElementsAre(ProcessRow{90, u"cläude"_s, u"t"_s}));
    EXPECT_THAT(rowsOf("90 claude t\n91 \xff t\n"), IsEmpty());
    EXPECT_THAT(rowsOf("90 claude t\n91 \xc3"), IsEmpty());
}

TEST_F(CommandProcessTableTest, AWorkingDirectoryIsTheFirstPathNamed) {
    outputs[lsofDirectory] = "p7\nfcwd\nn/Users/me/my project\nn/other\n";
    EXPECT_EQ(table.workingDirectory(7), u"/Users/me/my project"_s);
    outputs[lsofDirectory] = "p7\nfcwd\nn(unreachable)\nn/there\n";
    EXPECT_EQ(table.workingDirectory(7), u"/there"_s);
}

TEST_F(CommandProcessTableTest, AReplyWithoutAPathNamesNoDirectory) {
    outputs[lsofDirectory] = "";
    EXPECT_EQ(table.workingDirectory(7), std::nullopt);
    outputs[lsofDirectory] = "p7\nfcwd\n";
    EXPECT_EQ(table.workingDirectory(7), std::nullopt);
}

TEST_F(CommandProcessTableTest, AComplaintIsNoDirectory) {
    outputs[lsofDirectory] = "p7\nfcwd\nn/proc/7/cwd (readlink: Permission denied)\n";
    EXPECT_EQ(table.workingDirectory(7), std::nullopt);
}

TEST_F(CommandProcessTableTest, HoldersAreAskedAboutInTheirOrder) {
    outputs[lsofTTY] = "300\n \t20 \n\nnonsense\n20 1\n1\n";
    std::vector<ProcessID> asked;
    const auto noOne = [&asked](ProcessID pid) {
        asked.push_back(pid);
        return false;
    };
    EXPECT_EQ(table.firstHolder(u"/dev/ttys003"_s, noOne), std::nullopt);
    EXPECT_THAT(asked, ElementsAre(300, 20, 1));
    EXPECT_EQ(table.firstHolder(u"/dev/ttys003"_s, [](ProcessID pid) { return pid < 300; }), 20);
}

TEST_F(CommandProcessTableTest, AParentIsANumberAmongWhiteSpace) {
    outputs[psParent] = "  \t 4700\n\n";
    EXPECT_EQ(table.parent(7), 4700);
    outputs[psParent] = "    0\n";
    EXPECT_EQ(table.parent(7), 0);
}

TEST_F(CommandProcessTableTest, WithoutANumberThereIsNoParent) {
    for (const char* output : {"", " \n", "1 2\n", "PPID\n", "99999999999\n"}) {
        outputs[psParent] = output;
        EXPECT_EQ(table.parent(7), std::nullopt) << output;
    }
}
