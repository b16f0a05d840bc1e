#pragma once

#include "services/agents/AgentService.h"
#include "support/VirtualScheduler.h"
#include "support/fakes/FakeKeyEvents.h"
#include "support/fakes/FakePasteboard.h"
#include "support/fakes/FakeProcessTable.h"
#include "support/fakes/FakeTerminalAutomation.h"
#include "support/fakes/FakeWorkspace.h"

#include <memory>

#include <gtest/gtest.h>

namespace quorvin::testing {

/// A desktop that writes down the activations among the keystrokes.
class DeliveryWorkspace final : public Workspace {
public:
    explicit DeliveryWorkspace(FakeKeyEvents& diary) : m_diary(diary) {}

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override {
        return std::nullopt;
    }
    [[nodiscard]] std::vector<RunningApplication> runningApplications() override { return running; }
    Request activate(ProcessID processIdentifier) override {
        m_diary.note(QStringLiteral("activate %1").arg(processIdentifier));
        return activateAnswer;
    }
    Request openURL(const QString& url) override {
        openedURLs.append(url);
        return Request::made;
    }

    std::vector<RunningApplication> running;
    Request activateAnswer = Request::made;
    QStringList openedURLs;

private:
    FakeKeyEvents& m_diary;
};

/// Deliveries on a virtual clock. `keyEvents.keystrokes()` is the diary of what is pressed, raised
/// and focused, with the milliseconds since the start.
class DeliveryTest : public ::testing::Test {
protected:
    /// A session in the stock terminal, which runs as process 60.
    static AgentSessionInfo session(AgentType type = AgentType::claude) {
        return {4711,
                4711,
                type,
                QStringLiteral("project"),
                QStringLiteral("/dev/ttys003"),
                QStringLiteral("com.apple.Terminal")};
    }

    void runTerminal(ProcessID processIdentifier) {
        workspace.running.push_back(
            {processIdentifier, QStringLiteral("Terminal"), QStringLiteral("com.apple.Terminal")});
    }

    VirtualScheduler scheduler;
    FakePasteboard pasteboard;
    FakeKeyEvents keyEvents{scheduler};
    FakeTerminalAutomation terminalAutomation;
    DeliveryWorkspace workspace{keyEvents};
    std::unique_ptr<AgentService> service = std::make_unique<AgentService>(
        scheduler, workspace, [] { return std::make_unique<FakeProcessTable>(FakeProcesses()); },
        [](const std::function<void()>& work) { work(); },
        AgentService::Transport{pasteboard, keyEvents, terminalAutomation});
};

} // namespace quorvin::testing
