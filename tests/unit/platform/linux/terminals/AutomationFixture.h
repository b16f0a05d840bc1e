#pragma once

#include "platform/linux/terminals/LinuxTerminalAutomation.h"
#include "support/Eventually.h"
#include "support/VirtualScheduler.h"
#include "support/fakes/FakeWorkspace.h"
#include "unit/platform/linux/freedesktop/PrivateBus.h"

#include <QDBusConnection>
#include <QHash>
#include <QTemporaryDir>

#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace quorvin::testing {

/// The windows of a desktop, laid out by hand.
class FakeTerminalWindows final : public TerminalWindows {
public:
    [[nodiscard]] std::vector<TerminalWindow> windows() override { return present; }
    void raise(WindowID window) override { raised.push_back(window); }
    [[nodiscard]] std::uint32_t time() override { return 123'456; }

    std::vector<TerminalWindow> present;
    std::vector<WindowID> raised;
};

/// Stops a message bus, so that it takes questions and never answers, for as long as this lives.
class FrozenBus {
public:
    explicit FrozenBus(const QDBusConnection& connection);
    ~FrozenBus();
    FrozenBus(const FrozenBus&) = delete;
    FrozenBus& operator=(const FrozenBus&) = delete;

private:
    ProcessID m_daemon;
};

/// Terminals and shells of a machine that is laid out by hand, on a virtual clock.
class AutomationTest : public ::testing::Test {
public:
    ~AutomationTest() override;

protected:
    using Environment = QHash<QByteArray, QByteArray>;

    /// A process that is on no terminal device, such as a terminal.
    void addProgram(ProcessID pid, ProcessID parent = 1);
    /// A process on the pseudo terminal of this number, which has the path "/dev/pts/<number>".
    void addShell(ProcessID pid, ProcessID parent, int pseudoTerminal,
                  const Environment& environment, const QByteArray& name = "sh");

    /// The automation of that machine; made at the first call.
    LinuxTerminalAutomation& automation();
    void endAutomation() { m_automation.reset(); }
    /// Begins to focus a tab; the answer appears in the returned place.
    std::shared_ptr<std::optional<TabFocus>> beginFocus(const QString& tty);
    /// Focuses a tab and waits for the answer.
    TabFocus focus(const QString& tty);

    VirtualScheduler scheduler;
    FakeWorkspace workspace;
    FakeTerminalWindows windows;
    QTemporaryDir directory; // of the processes, and for what a test puts there
    QDBusConnection bus{QStringLiteral("no bus")};
    QString tmux;

private:
    void addProcess(ProcessID pid, const QByteArray& name, ProcessID parent, int device);
    void writeFile(ProcessID pid, const QString& name, const QByteArray& content);

    std::unique_ptr<LinuxTerminalAutomation> m_automation;
};

} // namespace quorvin::testing
