#include "unit/platform/linux/terminals/AutomationFixture.h"

#include <QFile>
#include <QRegularExpression>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A stand-in for tmux: a shell script that keeps its arguments and prints what the test wrote for
/// the command.
class TmuxPanesTest : public AutomationTest {
protected:
    TmuxPanesTest() {
        tmux = directory.filePath(u"tmux"_s);
        write(u"tmux"_s, "#!/bin/sh\n"
                         "cd \"$(dirname \"$0\")\"\n"
                         "for argument; do printf '%s|' \"$argument\"; done >> calls\n"
                         "echo >> calls\n"
                         ". ./behaviour\n"
                         "if [ -f \"$3\" ]; then cat \"$3\"; fi\n");
        QFile(tmux).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        behave("[ -f \"$3\" ] || [ \"${3#list}\" = \"$3\" ] || exit 1");

        addProgram(50); // the server
        addProgram(60);
        addShell(100, 50, 7, {{"TMUX", "/run/tmux,0/default,50,0"}, {"WINDOWID", "9"}});
        addShell(110, 60, 1, {{"WINDOWID", "5001"}});
        addShell(111, 60, 2, {{"WINDOWID", "5002"}});
        windows.present = {{5001, 60}, {5002, 60}};
    }

    void write(const QString& name, const QByteArray& content) {
        QFile file(directory.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    void behave(const QByteArray& commands) { write(u"behaviour"_s, commands + '\n'); }
    void listPanes(const QByteArray& lines) { write(u"list-panes"_s, lines); }
    void listClients(const QByteArray& lines) { write(u"list-clients"_s, lines); }

    /// What tmux was told, besides the two listings.
    QStringList commands() {
        QFile file(directory.filePath(u"calls"_s));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
        return lines.filter(QRegularExpression(u"^((?!\\|list-).)*$"_s));
    }
};

} // namespace

TEST_F(TmuxPanesTest, ThePaneIsSelectedAndTheWindowOfItsClientRaised) {
    listPanes("/dev/pts/6 $0 @0 %0 0\n"
              "/dev/pts/7 $0 @1 %3 0\n");
    listClients("1700 $0 /dev/pts/2\n");
    const TabFocus answer = focus(u"/dev/pts/7"_s);
    EXPECT_THAT(commands(), ElementsAre(u"-S|/run/tmux,0/default|select-window|-t|$0:@1|;|"
                                        "select-pane|-t|%3|"_s));
    EXPECT_THAT(windows.raised, ElementsAre(5002));
    EXPECT_EQ(answer.terminal, 60);
}

TEST_F(TmuxPanesTest, OfSeveralClientsTheLastUsedOfTheSessionShowsThePane) {
    listPanes("/dev/pts/7 $0 @1 %3 0\n");
    listClients("1900 $1 /dev/pts/9\n"
                "1700 $0 /dev/pts/1\n"
                "1800 $0 /dev/pts/2\n");
    std::ignore = focus(u"/dev/pts/7"_s);
    EXPECT_THAT(windows.raised, ElementsAre(5002));
}

TEST_F(TmuxPanesTest, AClientElsewhereIsBroughtToTheSessionWhenNoneIsThere) {
    listPanes("/dev/pts/7 $0 @1 %3 0\n");
    listClients("1700 $5 /dev/pts/1\n");
    std::ignore = focus(u"/dev/pts/7"_s);
    EXPECT_THAT(commands(), ElementsAre(u"-S|/run/tmux,0/default|switch-client|-c|/dev/pts/1|-t|$0|"
                                        ";|select-window|-t|$0:@1|;|select-pane|-t|%3|"_s));
    EXPECT_THAT(windows.raised, ElementsAre(5001));
}

TEST_F(TmuxPanesTest, AWindowThatIsInTwoSessionsIsShownWhereItsUserIs) {
    listPanes("/dev/pts/7 $0 @1 %3 0\n"
              "/dev/pts/7 $4 @1 %3 0\n");
    listClients("1700 $4 /dev/pts/1\n");
    std::ignore = focus(u"/dev/pts/7"_s);
    EXPECT_THAT(commands(), ElementsAre(u"-S|/run/tmux,0/default|select-window|-t|$4:@1|;|"
                                        "select-pane|-t|%3|"_s));
}

TEST_F(TmuxPanesTest, APaneInCopyModeIsBroughtBackToItsProgram) {
    listPanes("/dev/pts/7 $0 @1 %3 1\n");
    listClients("1700 $0 /dev/pts/1\n");
    std::ignore = focus(u"/dev/pts/7"_s);
    EXPECT_THAT(commands(), ElementsAre(u"-S|/run/tmux,0/default|select-window|-t|$0:@1|;|"
                                        "select-pane|-t|%3|;|copy-mode|-q|-t|%3|"_s));
}

TEST_F(TmuxPanesTest, WithoutAnyClientThePaneIsNowhereToBeSeen) {
    listPanes("/dev/pts/7 $0 @1 %3 0\n");
    listClients("");
    const TabFocus answer = focus(u"/dev/pts/7"_s);
    EXPECT_EQ(answer.result, TabFocus::Result::notFound);
    EXPECT_THAT(commands(), IsEmpty());
    EXPECT_THAT(windows.raised, IsEmpty());
}

TEST_F(TmuxPanesTest, ATerminalThatWasStartedInAPaneIsTakenForItself) {
    addShell(112, 60, 3, {{"TMUX", "/run/tmux,0/default,50,0"}, {"WINDOWID", "5002"}});
    listPanes("/dev/pts/7 $0 @1 %3 0\n");
    std::ignore = focus(u"/dev/pts/3"_s);
    EXPECT_THAT(windows.raised, ElementsAre(5002));
}

TEST_F(TmuxPanesTest, AServerThatHasGoneLeavesTheWindowToBeFound) {
    windows.present.push_back({9, 50});
    std::ignore = focus(u"/dev/pts/7"_s); // there is no listing: the command fails
    EXPECT_THAT(windows.raised, ElementsAre(9));
}

TEST_F(TmuxPanesTest, AMultiplexerInAMultiplexerIsFollowedToTheEnd) {
    addShell(113, 50, 8, {{"TMUX", "/run/tmux,0/default,50,0"}});
    listPanes("/dev/pts/7 $0 @1 %3 0\n"
              "/dev/pts/8 $1 @2 %4 0\n");
    listClients("1700 $0 /dev/pts/8\n"
                "1700 $1 /dev/pts/1\n");
    std::ignore = focus(u"/dev/pts/7"_s);
    EXPECT_EQ(commands().size(), 2);
    EXPECT_THAT(windows.raised, ElementsAre(5001));
}

TEST_F(TmuxPanesTest, AClientInItsOwnPaneEndsTheSearch) {
    listPanes("/dev/pts/7 $0 @1 %3 0\n");
    listClients("1700 $0 /dev/pts/7\n");
    EXPECT_EQ(focus(u"/dev/pts/7"_s).result, TabFocus::Result::notFound);
    EXPECT_THAT(windows.raised, IsEmpty());
}

TEST_F(TmuxPanesTest, ACommandThatHangsIsEndedAfterASecond) {
    behave("touch started; exec sleep 1000");
    windows.present.push_back({9, 50});
    const auto answer = beginFocus(u"/dev/pts/7"_s);
    ASSERT_TRUE(eventually([this] { return QFile::exists(directory.filePath(u"started"_s)); }));
    scheduler.advance(999ms);
    EXPECT_EQ(answer->has_value(), false);
    scheduler.advance(1ms);
    EXPECT_TRUE(eventually([&] { return answer->has_value(); }));
    EXPECT_THAT(windows.raised, ElementsAre(9));
}

TEST_F(TmuxPanesTest, TheAutomationMayGoWhileACommandRuns) {
    behave("exec sleep 1000");
    const auto answer = beginFocus(u"/dev/pts/7"_s);
    endAutomation();
    ASSERT_TRUE(answer->has_value());
    EXPECT_EQ((*answer)->result, TabFocus::Result::notFound);
}

TEST_F(TmuxPanesTest, WithoutTmuxTheWindowIsLookedForAsUsual) {
    tmux.clear();
    windows.present.push_back({9, 50});
    std::ignore = focus(u"/dev/pts/7"_s);
    EXPECT_THAT(windows.raised, ElementsAre(9));
}
