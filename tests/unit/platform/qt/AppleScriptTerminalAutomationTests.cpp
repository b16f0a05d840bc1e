#include "platform/qt/AppleScriptTerminalAutomation.h"
#include "support/Eventually.h"
#include "support/VirtualScheduler.h"
#include "support/fakes/FakeWorkspace.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <atomic>
#include <csignal>
#include <memory>
#include <thread>

#include <gmock/gmock.h>
#include <sys/stat.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;
using ::testing::UnorderedElementsAre;

namespace {

const QString iTerm = u"com.googlecode.iterm2"_s;
const QString terminal = u"com.apple.Terminal"_s;
const QString warp = u"dev.warp.Warp-Stable"_s;

const QString systemEvents =
    u"-e\ntell application \"System Events\" to return name of first process"_s;

const QString terminalScript = u"-e\n"
                               "tell application \"Terminal\"\n"
                               "    activate\n"
                               "    set targetTTY to \"/dev/ttys003\"\n"
                               "    repeat with w in windows\n"
                               "        repeat with t in tabs of w\n"
                               "            try\n"
                               "                if tty of t is targetTTY then\n"
                               "                    set index of w to 1\n"
                               "                    set selected tab of w to t\n"
                               "                    return \"focused\"\n"
                               "                end if\n"
                               "            end try\n"
                               "        end repeat\n"
                               "    end repeat\n"
                               "    return \"not found\"\n"
                               "end tell"_s;
const QString iTermScript = u"-e\n"
                            "tell application \"iTerm\"\n"
                            "    set targetTTY to \"/dev/ttys003\"\n"
                            "    repeat with w in windows\n"
                            "        repeat with t in tabs of w\n"
                            "            repeat with s in sessions of t\n"
                            "                try\n"
                            "                    if tty of s is targetTTY then\n"
                            "                        select t\n"
                            "                        select s\n"
                            "                        return \"focused\"\n"
                            "                    end if\n"
                            "                end try\n"
                            "            end repeat\n"
                            "        end repeat\n"
                            "    end repeat\n"
                            "    return \"not found\"\n"
                            "end tell"_s;

/// A stand-in for the interpreter: a shell script that keeps its arguments, a line each, in a file
/// of its own, and then does what the test says.
class AppleScriptTerminalAutomationTest : public ::testing::Test {
protected:
    AppleScriptTerminalAutomationTest() {
        QFile file(interpreter());
        if (file.open(QIODevice::WriteOnly)) {
            file.write("#!/bin/sh\n"
                       "cd \"$(dirname \"$0\")\"\n"
                       "run=$(mktemp writing.XXXXXX)\n"
                       "printf '%s' \"$1\" > $run\n"
                       "shift\n"
                       "for argument; do printf '\\n%s' \"$argument\" >> $run; done\n"
                       "mv $run run$run\n"
                       ". ./behaviour\n");
            file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        }
        behave("true");
    }

    [[nodiscard]] QString interpreter() const { return directory.filePath(u"osascript"_s); }

    /// What the interpreter does in its next runs, in the language of the shell.
    void behave(const QByteArray& commands) {
        QFile file(directory.filePath(u"behaviour"_s));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(commands + '\n');
        }
    }

    /// The arguments of all runs so far.
    [[nodiscard]] std::vector<QString> runs() const {
        std::vector<QString> runs;
        const QDir place(directory.path());
        for (const QString& name : place.entryList({u"runwriting.*"_s}, QDir::Files)) {
            QFile file(place.filePath(name));
            runs.push_back(file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll())
                                                          : u"unreadable"_s);
        }
        return runs;
    }

    TabFocus::Result focus(const QString& bundleIdentifier) {
        std::optional<TabFocus> answer;
        const auto run = [&]() -> Task<> {
            answer = co_await automation->focusTab(bundleIdentifier, u"/dev/ttys003"_s);
        };
        run();
        EXPECT_TRUE(answer) << "it holds its caller";
        EXPECT_EQ(answer->terminal, std::nullopt);
        return answer->result;
    }

    /// Begins to check; the answer appears in the returned place.
    std::shared_ptr<std::optional<bool>> check() {
        const auto answer = std::make_shared<std::optional<bool>>();
        const auto run = [](AppleScriptTerminalAutomation& asked,
                            std::shared_ptr<std::optional<bool>> place) -> Task<> {
            *place = co_await asked.checkPermission();
        };
        run(*automation, answer);
        return answer;
    }

    std::optional<bool> checkWith(const QByteArray& behaviour) {
        behave(behaviour);
        const auto answer = check();
        EXPECT_TRUE(eventually([&] { return answer->has_value(); }));
        return *answer;
    }

    QTemporaryDir directory;
    FakeWorkspace workspace;
    VirtualScheduler scheduler;
    std::unique_ptr<AppleScriptTerminalAutomation> automation =
        std::make_unique<AppleScriptTerminalAutomation>(scheduler, workspace, interpreter());
};

} // namespace

// --- Tabs ----------------------------------------------------------------------------------------

TEST_F(AppleScriptTerminalAutomationTest, TerminalGetsItsOwnScriptWithTheTty) {
    behave("echo focused");
    EXPECT_EQ(focus(terminal), TabFocus::Result::found);
    EXPECT_EQ(runs(), std::vector{terminalScript});
}

TEST_F(AppleScriptTerminalAutomationTest, ITermGetsItsOwnScriptWithTheTty) {
    behave("echo focused");
    EXPECT_EQ(focus(iTerm), TabFocus::Result::found);
    EXPECT_EQ(runs(), std::vector{iTermScript});
}

TEST_F(AppleScriptTerminalAutomationTest, OtherTerminalsAreNotScriptedAndNothingIsLaunched) {
    for (const QString& other :
         {warp, u"org.alacritty"_s, u"net.kovidgoyal.kitty"_s, u"co.zeit.hyper"_s, u""_s}) {
        EXPECT_EQ(focus(other), TabFocus::Result::notScriptable);
    }
    EXPECT_TRUE(runs().empty());
}

TEST_F(AppleScriptTerminalAutomationTest, ATabThatHasGoneIsNotFoundAndTriedOnce) {
    behave("echo 'not found'");
    EXPECT_EQ(focus(iTerm), TabFocus::Result::notFound);
    EXPECT_EQ(runs().size(), 1U);
}

TEST_F(AppleScriptTerminalAutomationTest, TheWordFocusedCountsAnywhereInALine) {
    behave("printf '  the tab is focused now\\n\\n'");
    EXPECT_EQ(focus(terminal), TabFocus::Result::found);
}

TEST_F(AppleScriptTerminalAutomationTest, TheExitStatusAndTheErrorOutputAreNotLookedAt) {
    behave("echo focused; exit 3");
    EXPECT_EQ(focus(terminal), TabFocus::Result::found);
    behave("echo focused >&2");
    EXPECT_EQ(focus(terminal), TabFocus::Result::notFound);
}

TEST_F(AppleScriptTerminalAutomationTest, OutputThatIsNoTextIsNoAnswer) {
    behave("printf 'focused \\377'");
    EXPECT_EQ(focus(terminal), TabFocus::Result::notFound);
}

TEST_F(AppleScriptTerminalAutomationTest, AnInterpreterThatIsNotThereFindsNothing) {
    ASSERT_TRUE(QFile::remove(interpreter()));
    EXPECT_EQ(focus(terminal), TabFocus::Result::notFound);
}

TEST_F(AppleScriptTerminalAutomationTest, AScriptThatHangsHoldsItsCaller) {
    const QByteArray pipe = directory.filePath(u"consent"_s).toUtf8();
    ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);
    behave("read answer < consent; echo $answer");
    std::atomic<bool> hasAnswered = false;
    std::thread user([&] {
        QFile file(QString::fromUtf8(pipe));
        if (file.open(QIODevice::WriteOnly)) { // waits until the script reads
            hasAnswered = true;
            file.write("focused\n");
        }
    });
    EXPECT_EQ(focus(terminal), TabFocus::Result::found);
    EXPECT_TRUE(hasAnswered);
    user.join();
}

// --- Permission ----------------------------------------------------------------------------------

TEST_F(AppleScriptTerminalAutomationTest, ANameAndStatusZeroIsThePermission) {
    EXPECT_EQ(checkWith("echo loginwindow"), true);
    EXPECT_EQ(runs(), std::vector{systemEvents});
}

TEST_F(AppleScriptTerminalAutomationTest, ARefusalIsFoundInBothOutputs) {
    EXPECT_EQ(checkWith("echo 'execution error: (-1743)' >&2"), false);
    EXPECT_EQ(checkWith("echo 'execution error: (-1743)'"), false);
    EXPECT_EQ(checkWith("echo 'is not authorized to send events' >&2"), false);
    EXPECT_EQ(checkWith("echo 'is not allowed' >&2"), false);
}

TEST_F(AppleScriptTerminalAutomationTest, OtherwiseTheStatusDecides) {
    EXPECT_EQ(checkWith("echo loginwindow; exit 1"), false);
    EXPECT_EQ(checkWith("kill -9 $$"), false);
    EXPECT_EQ(checkWith("echo 'Not Allowed' >&2"), true); // deliberate: case matters
    EXPECT_EQ(checkWith("printf '1743 \\377'"), true);    // no text counts as no output
}

TEST_F(AppleScriptTerminalAutomationTest, WithoutAnInterpreterThereIsNoPermission) {
    ASSERT_TRUE(QFile::remove(interpreter()));
    const auto answer = check();
    EXPECT_TRUE(eventually([&] { return answer->has_value(); }));
    EXPECT_EQ(*answer, false);
}

TEST_F(AppleScriptTerminalAutomationTest, ARunThatHangsIsTerminatedAfterThreeSeconds) {
    behave("echo $$ > pid; mv pid started; exec sleep 1000");
    const auto answer = check();
    const QString started = directory.filePath(u"started"_s);
    ASSERT_TRUE(eventually([&] { return QFile::exists(started); }));
    QFile file(started);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const pid_t child = file.readAll().trimmed().toInt();

    scheduler.advance(2999ms);
    EXPECT_EQ(kill(child, 0), 0);
    EXPECT_EQ(*answer, std::nullopt);
    scheduler.advance(1ms);
    EXPECT_TRUE(eventually([&] { return answer->has_value(); }));
    EXPECT_EQ(*answer, false);
    EXPECT_NE(kill(child, 0), 0);
}

TEST_F(AppleScriptTerminalAutomationTest, TheMainThreadIsFreeDuringTheCheck) {
    const QByteArray pipe = directory.filePath(u"consent"_s).toUtf8();
    ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);
    behave("read answer < consent; echo $answer");
    const auto answer = check();
    EXPECT_EQ(*answer, std::nullopt);
    QFile file(QString::fromUtf8(pipe)); // would wait for ever, were the script not running already
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("loginwindow\n");
    file.close();
    EXPECT_TRUE(eventually([&] { return answer->has_value(); }));
    EXPECT_EQ(*answer, true);
}

TEST_F(AppleScriptTerminalAutomationTest, ACheckEndsWhenTheAutomationGoes) {
    behave("exec sleep 1000");
    const auto answer = check();
    automation.reset();
    EXPECT_EQ(*answer, false);
    scheduler.advance(3s); // the watchdog finds nothing
}

TEST_F(AppleScriptTerminalAutomationTest, RequestingPermissionsAsksOnlyForWhatRuns) {
    automation->requestPermissions();
    EXPECT_TRUE(eventually([this] { return runs().size() == 1; }));
    EXPECT_EQ(runs(), std::vector{systemEvents});
}

TEST_F(AppleScriptTerminalAutomationTest, RequestingPermissionsAsksEachRunningTerminal) {
    workspace.running = {
        {60, u"Terminal"_s, terminal}, {61, u"Warp"_s, warp}, {62, u"iTerm2"_s, iTerm}};
    behave("exec sleep 1000"); // they don't wait for each other
    automation->requestPermissions();
    EXPECT_TRUE(eventually([this] { return runs().size() == 3; }));
    EXPECT_THAT(runs(), UnorderedElementsAre(
                            systemEvents, u"-e\ntell application \"iTerm\" to return name"_s,
                            u"-e\ntell application \"Terminal\" to return name"_s));
}
