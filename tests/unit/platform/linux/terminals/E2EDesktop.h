#pragma once

#include "platform/linux/procfs/ProcfsProcessTable.h"
#include "platform/linux/terminals/LinuxTerminalAutomation.h"
#include "platform/linux/terminals/X11TerminalWindows.h"
#include "platform/linux/x11/X11Workspace.h"
#include "platform/linux/x11/XTestKeyEvents.h"
#include "platform/qt/QtPasteboard.h"
#include "platform/qt/QtScheduler.h"
#include "services/agents/AgentService.h"
#include "unit/platform/linux/x11/XDesktop.h"

#include <QString>
#include <QTemporaryDir>

#include <chrono>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace quorvin::testing {

/// Runs this very program once more on a desktop of its own: an X server, a message bus and a home
/// directory, all of which end with it. Returns its exit code.
[[nodiscard]] int runOnPrivateDesktop(const QStringList& arguments);
/// Whether this is the program that runs there.
[[nodiscard]] bool isOnPrivateDesktop();

/// One stand-in for a coding agent.
class Agent {
public:
    /// `name` is that of its process: "claude" or "opencode". `directory` gets its files.
    Agent(const QTemporaryDir& directory, int number, const QString& name);

    /// For a terminal to run.
    [[nodiscard]] QStringList command() const { return {m_program, m_file}; }
    /// The terminal device, as soon as it reads from it; empty before.
    [[nodiscard]] QString tty() const;
    /// Ends it, and with it the window or the tab.
    void end() const;
    /// Every byte that has come.
    [[nodiscard]] QByteArray received() const;

private:
    QString m_program;
    QString m_file;
};

/// How a terminal is told to run a program in a new window.
struct Terminal {
    const char* name;
    QString program;
    QStringList argumentsBefore;
};
[[nodiscard]] const std::vector<Terminal>& allTerminals();
[[nodiscard]] const Terminal& terminalNamed(const char* name);

/// Agents in real terminals, and the program's own way to them, from the scan to the keys.
class TerminalsE2ETest : public ::testing::Test {
protected:
    static constexpr auto patience = std::chrono::seconds(60); // for terminals drawn by software

    void SetUp() override;
    void TearDown() override;

    [[nodiscard]] Agent makeAgent(const QString& name);
    /// Opens a window with an agent in it, and waits until the agent reads and the window is there.
    [[nodiscard]] Agent openAgent(const Terminal& terminal, const QString& name);
    /// Starts a program that is ended with the test.
    void start(const QString& program, const QStringList& arguments);
    /// Runs a program to its end and returns what it prints.
    [[nodiscard]] QByteArray run(const QString& program, const QStringList& arguments);
    [[nodiscard]] bool eventuallyReads(const Agent& agent);
    [[nodiscard]] bool eventuallyShows(std::size_t windowCount);
    void write(const QString& name, const QByteArray& content);
    [[nodiscard]] QString path(const QString& name) const { return m_directory.filePath(name); }

    /// Scans, and sends to the session that was found on the agent's terminal device.
    void deliver(const Agent& agent, const QString& text, const QList<QUrl>& images = {});
    /// Checks that a message has come as one paste and one Return, and nothing after it.
    void expectSubmitted(const Agent& agent, const QString& message);
    /// Presses a key as a user would.
    void press(xcb_keycode_t key);
    /// What a paste would give now.
    [[nodiscard]] QString selection(const char* name);

    XDesktop desktop{qgetenv("DISPLAY")};
    XcbConnection connection;
    X11Workspace workspace{connection, QString()};
    QtPasteboard pasteboard;
    X11TerminalWindows terminalWindows{connection, workspace};
    QtScheduler scheduler;
    XTestKeyEvents keyEvents{scheduler, connection};
    LinuxTerminalAutomation automation{scheduler, workspace, terminalWindows,
                                       LinuxTerminalAutomation::thisSystem()};
    AgentService service{scheduler, workspace,
                         [] { return std::make_unique<ProcfsProcessTable>(); },
                         [](const std::function<void()>& work) { work(); },
                         AgentService::Transport{pasteboard, keyEvents, automation}};

private:
    /// Of the windows that are shown.
    [[nodiscard]] QString titles();
    [[nodiscard]] std::optional<AgentSessionInfo> sessionOn(const QString& tty);

    QTemporaryDir m_directory;
    std::vector<std::unique_ptr<QProcess>> m_processes;
    std::vector<Agent> m_agents;
};

} // namespace quorvin::testing
