#include "services/agents/TerminalBinding.h"
#include "support/fakes/FakeProcessTable.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

class TerminalBindingTest : public ::testing::Test {
protected:
    void run(ProcessID pid, const std::optional<QString>& bundleIdentifier) {
        running.push_back({pid, std::nullopt, bundleIdentifier});
    }

    std::optional<QString> terminal() {
        FakeProcessTable table(processes);
        return TerminalBinding(table, running).findTerminalForTTY(tty);
    }

    const QString tty = u"/dev/pts/3"_s;
    FakeProcesses processes;
    std::vector<RunningApplication> running;
};

} // namespace

TEST_F(TerminalBindingTest, TheTerminalIsAnAncestorOfAHolder) {
    run(50, u"com.googlecode.iterm2"_s);
    run(60, u"org.alacritty"_s);
    processes.holders[tty] = {100};
    processes.parents = {{100, 80}, {80, 60}, {60, 1}};
    EXPECT_EQ(terminal(), u"org.alacritty"_s);
}

TEST_F(TerminalBindingTest, TheHolderItselfMayBeTheTerminal) {
    run(50, u"com.googlecode.iterm2"_s);
    run(60, u"org.alacritty"_s);
    processes.holders[tty] = {60};
    EXPECT_EQ(terminal(), u"org.alacritty"_s);
}

TEST_F(TerminalBindingTest, EveryProcessBelowTheRootMayBeTheTerminal) {
    run(50, u"com.googlecode.iterm2"_s);
    run(2, u"org.alacritty"_s); // the first one in a container
    processes.holders[tty] = {100};
    processes.parents = {{100, 2}, {2, 1}};
    EXPECT_EQ(terminal(), u"org.alacritty"_s);
}

TEST_F(TerminalBindingTest, TheNearestTerminalIsTaken) {
    run(50, u"com.googlecode.iterm2"_s);
    run(60, u"org.alacritty"_s); // started from within the other one
    processes.holders[tty] = {100};
    processes.parents = {{100, 60}, {60, 50}, {50, 1}};
    EXPECT_EQ(terminal(), u"org.alacritty"_s);
}

TEST_F(TerminalBindingTest, OtherApplicationsOnTheWayArePassedBy) {
    run(80, u"com.microsoft.VSCode"_s);
    run(70, std::nullopt);
    run(60, u"co.zeit.hyper"_s);
    processes.holders[tty] = {100};
    processes.parents = {{100, 80}, {80, 70}, {70, 60}};
    EXPECT_EQ(terminal(), u"co.zeit.hyper"_s);
}

TEST_F(TerminalBindingTest, TheFirstHolderWithATerminalDecides) {
    run(50, u"com.googlecode.iterm2"_s);
    run(60, u"org.alacritty"_s);
    processes.holders[tty] = {99, 101, 100};
    processes.parents = {{99, 1}, {100, 50}, {101, 60}};
    EXPECT_EQ(terminal(), u"org.alacritty"_s);
}

TEST_F(TerminalBindingTest, AParentThatCannotBeToldEndsOneChainOnly) {
    run(50, u"com.googlecode.iterm2"_s);
    run(60, u"org.alacritty"_s);
    processes.holders[tty] = {99, 100}; // 99 has ended meanwhile
    processes.parents = {{100, 60}};
    EXPECT_EQ(terminal(), u"org.alacritty"_s);
}

TEST_F(TerminalBindingTest, AChainThatLoopsEnds) {
    run(60, u"org.alacritty"_s);
    run(50, u"com.googlecode.iterm2"_s);
    processes.holders[tty] = {100};
    processes.parents = {{100, 101}, {101, 102}, {102, 100}};
    EXPECT_EQ(terminal(), u"com.googlecode.iterm2"_s) << "the fall-back";
}

TEST_F(TerminalBindingTest, TheRootOfTheTreeIsNoTerminal) {
    run(1, u"org.alacritty"_s);
    run(0, u"org.alacritty"_s);
    run(-5, u"org.alacritty"_s);
    run(50, u"com.googlecode.iterm2"_s);
    processes.holders[tty] = {100, 101, 102, 1, 0, -5};
    processes.parents = {{100, 1}, {101, 0}, {102, -5}};
    EXPECT_EQ(terminal(), u"com.googlecode.iterm2"_s);
}

TEST_F(TerminalBindingTest, OfTwoEntriesOfAProcessTheFirstCounts) {
    run(60, u"some.editor"_s);
    run(60, u"org.alacritty"_s);
    run(50, u"com.googlecode.iterm2"_s);
    processes.holders[tty] = {60};
    EXPECT_EQ(terminal(), u"com.googlecode.iterm2"_s);
}

TEST_F(TerminalBindingTest, WithoutAHolderTheFirstRunningRowOfTheTableIsTaken) {
    const QString byPriority[] = {
        u"com.googlecode.iterm2"_s, u"com.apple.Terminal"_s,   u"dev.warp.Warp-Stable"_s,
        u"org.alacritty"_s,         u"net.kovidgoyal.kitty"_s, u"co.zeit.hyper"_s,
    };
    ProcessID pid = 100;
    // Each that joins stands later in the list of applications and earlier in the table.
    for (auto row = std::rbegin(byPriority); row != std::rend(byPriority); ++row) {
        run(pid++, *row);
        EXPECT_EQ(terminal(), *row);
    }
}

TEST_F(TerminalBindingTest, WhenNoTerminalRunsThereIsNone) {
    run(60, u"com.microsoft.VSCode"_s);
    run(61, std::nullopt);
    processes.holders[tty] = {100};
    processes.parents = {{100, 60}};
    EXPECT_EQ(terminal(), std::nullopt);
}
