#include "services/agents/AgentService.h"
#include "support/VirtualScheduler.h"
#include "support/fakes/FakeKeyEvents.h"
#include "support/fakes/FakePasteboard.h"
#include "support/fakes/FakeProcessTable.h"
#include "support/fakes/FakeTerminalAutomation.h"
#include "support/fakes/FakeWorkspace.h"

#include <QThreadPool>

#include <deque>
#include <thread>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;
using ::testing::IsEmpty;

namespace {

class AgentServiceTest : public ::testing::Test {
protected:
    std::unique_ptr<AgentService> makeService() {
        return std::make_unique<AgentService>(
            scheduler, workspace,
            [this] {
                ++scans;
                return std::make_unique<FakeProcessTable>(processes);
            },
            [this](std::function<void()> work) { background.push_back(std::move(work)); },
            AgentService::Transport{pasteboard, keyEvents, terminalAutomation});
    }

    void add(ProcessID pid, const QString& command) {
        processes.rows.push_back({pid, command, u"pts/%1"_s.arg(pid)});
    }

    /// Runs the background work that was started as the `index`th of those that wait, and lets its
    /// result arrive.
    void finish(std::size_t index = 0) {
        const auto work = background.at(index);
        background.erase(background.begin() + static_cast<std::ptrdiff_t>(index));
        work();
        scheduler.runPosted();
    }

    void refresh() {
        service->refreshSessions();
        while (!background.empty()) {
            finish();
        }
    }

    FakeWorkspace workspace;
    FakeProcesses processes;
    std::deque<std::function<void()>> background;
    int scans = 0;
    VirtualScheduler scheduler;
    FakePasteboard pasteboard;
    FakeKeyEvents keyEvents{scheduler};
    FakeTerminalAutomation terminalAutomation;
    std::unique_ptr<AgentService> service = makeService();
};

} // namespace

TEST_F(AgentServiceTest, KnowsNothingBeforeItIsAsked) {
    EXPECT_THAT(service->claudeSessions(), IsEmpty());
    EXPECT_THAT(service->opencodeSessions(), IsEmpty());
    EXPECT_FALSE(service->accessibilityGranted());
    EXPECT_FALSE(service->automationGranted());
    EXPECT_EQ(service->lastScanTime(), std::nullopt);
    scheduler.advance(1h);
    EXPECT_THAT(background, IsEmpty());
}

TEST_F(AgentServiceTest, AScanPublishesTheSessionsOfBothAgents) {
    workspace.running = {{60, std::nullopt, u"org.alacritty"_s}};
    add(100, u"claude"_s);
    add(101, u"opencode"_s);
    bool isDone = false;
    const auto wait = [&]() -> Task<> {
        co_await service->refreshSessionsForce();
        isDone = true;
    };
    const Task<> waiting = wait();
    EXPECT_THAT(service->claudeSessions(), IsEmpty());
    scheduler.advance(3s);
    EXPECT_FALSE(isDone);
    finish();
    EXPECT_TRUE(isDone);
    ASSERT_EQ(service->claudeSessions().size(), 1);
    EXPECT_EQ(service->claudeSessions()[0].pid, 100);
    EXPECT_EQ(service->claudeSessions()[0].terminalBundleID, u"org.alacritty"_s);
    ASSERT_EQ(service->opencodeSessions().size(), 1);
    EXPECT_EQ(service->opencodeSessions()[0].pid, 101);
    EXPECT_EQ(service->lastScanTime(), scheduler.wallTime());
}

TEST_F(AgentServiceTest, TheApplicationsAreThoseOfTheStartOfTheScan) {
    workspace.running = {{60, std::nullopt, u"org.alacritty"_s}};
    add(100, u"claude"_s);
    service->refreshSessionsForce();
    workspace.running.clear();
    finish();
    EXPECT_EQ(service->claudeSessions().value(0).terminalBundleID, u"org.alacritty"_s);
}

TEST_F(AgentServiceTest, EveryScanNotifiesEvenOfTheSame) {
    add(100, u"claude"_s);
    QStringList order;
    QObject::connect(service.get(), &AgentService::claudeSessionsChanged, service.get(), [&] {
        order.append(u"claude"_s);
        EXPECT_EQ(service->claudeSessions().size(), 1);
    });
    QObject::connect(service.get(), &AgentService::opencodeSessionsChanged, service.get(),
                     [&] { order.append(u"opencode"_s); });
    service->refreshSessionsForce();
    service->refreshSessionsForce();
    finish();
    finish();
    EXPECT_EQ(order, (QStringList{u"claude"_s, u"opencode"_s, u"claude"_s, u"opencode"_s}));
}

TEST_F(AgentServiceTest, AnEmptyResultIsNeverFresh) {
    refresh();
    refresh();
    EXPECT_EQ(scans, 2);
}

TEST_F(AgentServiceTest, AResultWithSessionsIsFreshForTenSeconds) {
    add(100, u"claude"_s);
    refresh();
    scheduler.advance(9'999ms);
    refresh();
    EXPECT_EQ(scans, 1);
    scheduler.advance(1ms);
    refresh();
    EXPECT_EQ(scans, 2);
}

TEST_F(AgentServiceTest, AClockThatIsSetBackKeepsNoResultFresh) {
    add(100, u"claude"_s);
    refresh();
    scheduler.setWallTime(scheduler.wallTime().addSecs(-3600));
    refresh();
    EXPECT_EQ(scans, 2);
    refresh();
    EXPECT_EQ(scans, 2);
}

TEST_F(AgentServiceTest, ASessionOfEitherAgentMakesAResultFresh) {
    add(100, u"opencode"_s);
    refresh();
    refresh();
    EXPECT_EQ(scans, 1);
}

TEST_F(AgentServiceTest, FreshnessCountsFromTheEndOfTheScan) {
    add(100, u"claude"_s);
    service->refreshSessions();
    scheduler.advance(8s);
    finish();
    scheduler.advance(9s);
    refresh();
    EXPECT_EQ(scans, 1);
}

TEST_F(AgentServiceTest, AForcedRefreshScansAlthoughTheResultIsFresh) {
    add(100, u"claude"_s);
    refresh();
    processes.rows.clear();
    service->refreshSessionsForce();
    finish();
    EXPECT_EQ(scans, 2);
    EXPECT_THAT(service->claudeSessions(), IsEmpty());
}

TEST_F(AgentServiceTest, ATableThatCannotBeReadPublishesNothingAndCountsAsAScan) {
    add(100, u"claude"_s);
    refresh();
    processes.areReadable = false;
    scheduler.advance(20s);
    refresh();
    EXPECT_THAT(service->claudeSessions(), IsEmpty());
    EXPECT_EQ(service->lastScanTime(), scheduler.wallTime());
}

TEST_F(AgentServiceTest, OfOverlappingScansTheOneThatFinishesLastStands) {
    service->refreshSessionsForce();
    service->refreshSessionsForce();
    add(100, u"claude"_s);
    finish(1);
    EXPECT_EQ(service->claudeSessions().value(0).pid, 100);
    processes.rows.clear();
    add(200, u"claude"_s);
    finish(0);
    EXPECT_EQ(service->claudeSessions().value(0).pid, 200);
}

TEST_F(AgentServiceTest, AServiceThatHasGoneIsNotScannedForAndItsWaitersGoOn) {
    add(100, u"claude"_s);
    bool isDone = false;
    const auto wait = [&]() -> Task<> {
        co_await service->refreshSessionsForce();
        isDone = true;
    };
    const Task<> waiting = wait();
    service.reset();
    finish();
    EXPECT_EQ(scans, 0);
    EXPECT_TRUE(isDone);
}

TEST_F(AgentServiceTest, AServiceMayGoBetweenScanAndResult) {
    add(100, u"claude"_s);
    int changes = 0;
    QObject::connect(service.get(), &AgentService::claudeSessionsChanged, [&] { ++changes; });
    service->refreshSessionsForce();
    background.front()();
    EXPECT_EQ(scans, 1);
    service.reset();
    scheduler.runPosted();
    EXPECT_EQ(changes, 0);
}

TEST_F(AgentServiceTest, AListenerMayLetTheServiceGo) {
    const QObject listener;
    service->refreshSessionsForce();
    QObject::connect(service.get(), &AgentService::claudeSessionsChanged, &listener,
                     [&] { service.reset(); });
    finish();
    EXPECT_EQ(service, nullptr);
}

TEST_F(AgentServiceTest, TheScanIsKeptFromTheMainThread) {
    QThreadPool pool;
    std::thread::id scanner;
    AgentService threaded(
        scheduler, workspace,
        [&] {
            scanner = std::this_thread::get_id();
            return std::make_unique<FakeProcessTable>(processes);
        },
        [&pool](std::function<void()> work) { pool.start(std::move(work)); },
        AgentService::Transport{pasteboard, keyEvents, terminalAutomation});
    add(100, u"claude"_s);
    std::thread::id listener;
    QObject::connect(&threaded, &AgentService::claudeSessionsChanged, &threaded,
                     [&] { listener = std::this_thread::get_id(); });
    threaded.refreshSessionsForce();
    pool.waitForDone();
    EXPECT_THAT(threaded.claudeSessions(), IsEmpty());
    scheduler.runPosted();
    EXPECT_EQ(threaded.claudeSessions().size(), 1);
    EXPECT_EQ(listener, std::this_thread::get_id());
    EXPECT_NE(scanner, std::this_thread::get_id());
}

TEST_F(AgentServiceTest, ThePermissionThatIsWrittenCanBeWatched) {
    int notices = 0;
    QObject::connect(service.get(), &AgentService::accessibilityGrantedChanged, service.get(),
                     [&] { ++notices; });
    service->setAccessibilityGranted(true);
    service->setAccessibilityGranted(true);
    EXPECT_TRUE(service->accessibilityGranted());
    EXPECT_EQ(notices, 1);
}
