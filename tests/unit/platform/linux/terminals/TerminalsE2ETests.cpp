#include "services/agents/AgentMessage.h"
#include "support/Eventually.h"
#include "unit/platform/linux/terminals/E2EDesktop.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;
using ::testing::Values;

namespace {

const QString text =
    u"Prüfe die Datei — schnell!\n\tEingerückt: 日本語, עברית, 👩‍👩‍👧 \n\n"
    "$(echo no) `id` \"quoted\" \\n %s; rm -rf *\nletzte Zeile"_s;
const QList<QUrl> images{QUrl::fromLocalFile(u"/tmp/Bild mit Blank.png"_s),
                         QUrl::fromLocalFile(u"/tmp/plain.png"_s)};

class EveryTerminalTest : public TerminalsE2ETest,
                          public ::testing::WithParamInterface<const char*> {
protected:
    [[nodiscard]] const Terminal& terminal() const { return terminalNamed(GetParam()); }
};

/// Without Konsole, which asks its user first.
class LongMessageTest : public EveryTerminalTest {};

class TabsTest : public TerminalsE2ETest {
protected:
    /// Sends to each of two tabs while the other one is in front.
    void expectBothToBeReached(const Agent& first, const Agent& second) {
        for (const Agent* const agent : {&first, &second, &first}) {
            SCOPED_TRACE(agent == &first ? "first" : "second");
            const qsizetype before = agent->received().size();
            const Agent& other = agent == &first ? second : first;
            const QByteArray untouched = other.received();
            deliver(*agent, u"to you"_s);
            EXPECT_TRUE(eventually([&] { return agent->received().size() > before; }, patience));
            EXPECT_TRUE(eventually(
                [&] { return agent->received().sliced(before) == "\x1b[200~to you\x1b[201~\r"; },
                patience))
                << agent->received().sliced(before).toStdString();
            EXPECT_EQ(other.received(), untouched);
        }
    }
};

} // namespace

TEST_P(EveryTerminalTest, ManyLinesOfUnicodeWithAQuotedPathArriveWholeAndAreSubmittedOnce) {
    const Agent agent = openAgent(terminal(), u"claude"_s);
    deliver(agent, text, images);
    const QString message = AgentMessage::compose(AgentType::claude, text, images);
    expectSubmitted(agent, message);
    EXPECT_EQ(selection("clipboard"), message);
    EXPECT_EQ(selection("primary"), message);
}

TEST_P(LongMessageTest, AMegabyteArrivesWholeAndIsSubmittedOnce) {
    QString megabyte;
    for (int line = 0; megabyte.size() < 1'000'000; ++line) {
        megabyte += u"%1 ein längerer Satz, der geprüft wird — 日本語\n"_s.arg(line);
    }
    const Agent agent = openAgent(terminal(), u"opencode"_s);
    deliver(agent, megabyte);
    expectSubmitted(agent, megabyte);
    EXPECT_EQ(selection("clipboard"), megabyte);
}

TEST_P(EveryTerminalTest, OfTwoWindowsTheRightOneGetsTheMessage) {
    const Agent first = openAgent(terminal(), u"claude"_s);
    const Agent second = openAgent(terminal(), u"opencode"_s);
    deliver(first, u"to the first"_s);
    expectSubmitted(first, u"to the first"_s);
    EXPECT_EQ(second.received(), "");
    deliver(second, u"to the second"_s);
    expectSubmitted(second, u"to the second"_s);
    EXPECT_EQ(first.received(), "\x1b[200~to the first\x1b[201~\rx");
}

TEST_P(EveryTerminalTest, KeysForAProcessReachItBehindAnotherWindow) {
    using Direction = KeyEvent::Direction;
    const Agent agent = openAgent(terminal(), u"claude"_s);
    const auto running = workspace.runningApplications();
    ASSERT_EQ(running.size(), 1U);
    const ProcessID process = running[0].processIdentifier;
    const xcb_window_t front = desktop.open({.title = "front"});
    ASSERT_TRUE(eventuallyShows(2));
    ASSERT_TRUE(desktop.focus(front));
    pasteboard.clearContents();
    pasteboard.setString(u"TEST"_s);
    bool isDone = false;
    const auto post = [&]() -> Task<> {
        co_await keyEvents.post({VirtualKey::v, Direction::down, KeyModifiers::command}, process);
        co_await scheduler.sleep(50ms);
        co_await keyEvents.post({VirtualKey::v, Direction::up, KeyModifiers::command}, process);
        co_await scheduler.sleep(500ms);
        co_await keyEvents.post({VirtualKey::returnKey, Direction::down, KeyModifiers::none},
                                process);
        co_await scheduler.sleep(50ms);
        co_await keyEvents.post({VirtualKey::returnKey, Direction::up, KeyModifiers::none},
                                process);
        isDone = true;
    };
    const Task<> posting = post();
    EXPECT_TRUE(eventually([&] { return isDone; }));
    EXPECT_TRUE(eventually([&] { return agent.received().endsWith('\r'); }));
    EXPECT_EQ(agent.received(), "\x1b[200~TEST\x1b[201~\r");
    EXPECT_TRUE(eventually([&] { return desktop.hasFocus(front); }));
    desktop.close(front);
}

namespace {

const auto nameOfParameter = [](const auto& test) { return std::string(test.param); };

} // namespace

INSTANTIATE_TEST_SUITE_P(All, EveryTerminalTest,
                         Values("xterm", "kitty", "alacritty", "konsole", "xfce4_terminal",
                                "gnome_terminal"),
                         nameOfParameter);
INSTANTIATE_TEST_SUITE_P(All, LongMessageTest,
                         Values("xterm", "kitty", "alacritty", "xfce4_terminal", "gnome_terminal"),
                         nameOfParameter);

// --- Tabs and panes ------------------------------------------------------------------------------

TEST_F(TabsTest, OfTwoTabsOfKonsoleTheRightOneGetsTheMessage) {
    const Agent first = makeAgent(u"claude"_s);
    const Agent second = makeAgent(u"opencode"_s);
    write(u"tabs"_s, "title: 1;; command: " + first.command().join(u' ').toUtf8() +
                         "\ntitle: 2;; command: " + second.command().join(u' ').toUtf8() + "\n");
    start(u"konsole"_s, {u"--tabs-from-file"_s, path(u"tabs"_s), u"-e"_s, u"true"_s});
    ASSERT_TRUE(eventuallyReads(first) && eventuallyReads(second) && eventuallyShows(1));
    expectBothToBeReached(first, second);
}

TEST_F(TabsTest, OfTwoTabsOfKittyTheRightOneGetsTheMessage) {
    const Agent first = makeAgent(u"claude"_s);
    const Agent second = makeAgent(u"opencode"_s);
    write(u"session"_s, "launch " + first.command().join(u' ').toUtf8() + "\nnew_tab\nlaunch " +
                            second.command().join(u' ').toUtf8() + "\n");
    start(u"kitty"_s,
          {u"-o"_s, u"allow_remote_control=yes"_s, u"-o"_s, u"confirm_os_window_close=0"_s,
           u"--listen-on"_s, u"unix:"_s + path(u"kitty"_s), u"--session"_s, path(u"session"_s)});
    ASSERT_TRUE(eventuallyReads(first) && eventuallyReads(second) && eventuallyShows(1));
    expectBothToBeReached(first, second);
}

TEST_F(TabsTest, OfTwoTabsOfGnomeTerminalTheRightOneGetsTheMessage) {
    const Agent first = makeAgent(u"claude"_s);
    const Agent second = makeAgent(u"opencode"_s);
    start(u"gnome-terminal"_s, {u"--wait"_s, u"--window"_s, u"-e"_s, first.command().join(u' '),
                                u"--tab"_s, u"-e"_s, second.command().join(u' ')});
    ASSERT_TRUE(eventuallyReads(first) && eventuallyReads(second) && eventuallyShows(1));
    expectBothToBeReached(first, second);
}

TEST_F(TabsTest, OfTwoWindowsOfTmuxTheRightOneGetsTheMessage) {
    const Agent first = makeAgent(u"claude"_s);
    const Agent second = makeAgent(u"opencode"_s);
    const QStringList tmux{u"-S"_s, path(u"socket"_s), u"-f"_s, u"/dev/null"_s};
    const Agent decoy = openAgent(terminalNamed("xterm"), u"claude"_s);
    start(u"xterm"_s,
          QStringList{u"-e"_s, u"tmux"_s} + tmux + QStringList{u"new-session"_s} + first.command());
    ASSERT_TRUE(eventuallyReads(first) && eventuallyShows(2));
    std::ignore = run(u"tmux"_s, tmux + QStringList{u"new-window"_s} + second.command());
    ASSERT_TRUE(eventuallyReads(second));
    expectBothToBeReached(first, second);
    std::ignore = run(u"tmux"_s, tmux + QStringList{u"copy-mode"_s, u"-t"_s, u":0"_s});
    expectBothToBeReached(first, second);
    EXPECT_EQ(decoy.received(), "");
    std::ignore = run(u"tmux"_s, tmux + QStringList{u"kill-server"_s});
}

TEST_F(TabsTest, ATabOfKonsoleThatWasMovedToAWindowOfItsOwnIsFoundThere) {
    const Agent first = makeAgent(u"claude"_s);
    const Agent second = makeAgent(u"opencode"_s);
    write(u"tabs"_s, "title: 1;; command: " + first.command().join(u' ').toUtf8() +
                         "\ntitle: 2;; command: " + second.command().join(u' ').toUtf8() + "\n");
    start(u"konsole"_s, {u"--tabs-from-file"_s, path(u"tabs"_s), u"-e"_s, u"true"_s});
    ASSERT_TRUE(eventuallyReads(first) && eventuallyReads(second) && eventuallyShows(1));
    const auto konsole = workspace.runningApplications().at(0).processIdentifier;
    const QStringList detach{u"--print-reply=literal"_s,
                             u"--dest=org.kde.konsole-%1"_s.arg(konsole),
                             u"/konsole/MainWindow_1"_s, u"org.kde.KMainWindow.activateAction"_s,
                             u"string:detach-tab"_s};
    ASSERT_TRUE(eventually([&] { return run(u"dbus-send"_s, detach).contains("true"); }));
    ASSERT_TRUE(eventuallyShows(2));
    expectBothToBeReached(first, second);
}

TEST_F(TerminalsE2ETest, KonsoleAsksAboutALongMessageAndTakesTheReturnForTheAnswer) {
    const QString shortEnough(7'900, u'a');
    const QString tooLong(8'100, u'b');
    const Agent agent = openAgent(terminalNamed("konsole"), u"claude"_s);
    deliver(agent, shortEnough);
    expectSubmitted(agent, shortEnough);
    const qsizetype before = agent.received().size();
    deliver(agent, tooLong);
    // Whole, but to be submitted by the user.
    EXPECT_TRUE(eventually([&] { return agent.received().endsWith("b\x1b[201~"); }, patience));
    EXPECT_EQ(agent.received().size(), before + 6 + 8'100 + 6);
}

// --- The pasteboard ------------------------------------------------------------------------------

TEST_F(TerminalsE2ETest, AForeignSelectionTakenJustBeforeIsReplaced) {
    for (const char* const name : {"clipboard", "primary"}) {
        write(u"foreign"_s, "foreign");
        std::ignore = run(
            u"xclip"_s, {u"-selection"_s, QString::fromLatin1(name), u"-i"_s, path(u"foreign"_s)});
        ASSERT_TRUE(eventually([&] { return selection(name) == u"foreign"; }));
    }
    pasteboard.clearContents();
    EXPECT_EQ(selection("clipboard"), u""_s);
    EXPECT_EQ(selection("primary"), u""_s);
    pasteboard.setString(u"ours"_s);
    EXPECT_EQ(selection("clipboard"), u"ours"_s);
    EXPECT_EQ(selection("primary"), u"ours"_s);
}

int main(int argc, char** argv) {
    ::testing::InitGoogleMock(&argc, argv);
    if (!isOnPrivateDesktop()) {
        const QCoreApplication application(argc, argv);
        return ::testing::GTEST_FLAG(list_tests)
                   ? RUN_ALL_TESTS()
                   : runOnPrivateDesktop({u"--gtest_filter="_s +
                                          QString::fromStdString(::testing::GTEST_FLAG(filter))});
    }
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
