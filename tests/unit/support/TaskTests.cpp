#include "support/Task.h"
#include "support/VirtualScheduler.h"

#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace std::chrono_literals;
using quorvin::testing::VirtualScheduler;

namespace {

class SchedulerTest : public ::testing::Test {
protected:
    Task<> tick(CancellationToken token) {
        while (!token.isCancelled()) {
            co_await scheduler.sleep(10ms);
            if (token.isCancelled()) {
                co_return;
            }
            ++ticks;
        }
    }

    int ticks = 0;
    VirtualScheduler scheduler;
};

} // namespace

TEST_F(SchedulerTest, ATaskBeginsAfterThePresentCall) {
    bool ran = false;
    const CancellableTask task = scheduler.start([&ran](CancellationToken) -> Task<> {
        ran = true;
        co_return;
    });
    EXPECT_FALSE(ran);
    scheduler.runPosted();
    EXPECT_TRUE(ran);
}

TEST_F(SchedulerTest, SleepersWakeInTheOrderOfTheirTime) {
    std::vector<int> order;
    scheduler.postDelayed(20ms, [&] { order.push_back(20); });
    scheduler.postDelayed(10ms, [&] {
        order.push_back(10);
        scheduler.postDelayed(5ms, [&] { order.push_back(15); });
    });
    scheduler.advance(19ms);
    EXPECT_EQ(order, (std::vector{10, 15}));
    scheduler.advance(1ms);
    EXPECT_EQ(order, (std::vector{10, 15, 20}));
}

TEST_F(SchedulerTest, StartAfterCallsUnlessTheHandleIsDropped) {
    int calls = 0;
    CancellableTask kept = scheduler.startAfter(20ms, [&calls] { ++calls; });
    scheduler.advance(19ms);
    EXPECT_EQ(calls, 0);
    scheduler.advance(1ms);
    EXPECT_EQ(calls, 1);
    kept = scheduler.startAfter(20ms, [&calls] { calls += 10; });
    scheduler.advance(19ms);
    kept = scheduler.startAfter(20ms, [&calls] { calls += 100; });
    scheduler.advance(100ms);
    EXPECT_EQ(calls, 101);
}

TEST_F(SchedulerTest, ReplacingAHandleCancelsItsTask) {
    CancellableTask task = scheduler.start([this](CancellationToken token) { return tick(token); });
    scheduler.advance(35ms);
    EXPECT_EQ(ticks, 3);
    task = CancellableTask();
    scheduler.advance(100ms);
    EXPECT_EQ(ticks, 3);
    EXPECT_EQ(scheduler.sleepers(), 0U);
}

TEST_F(SchedulerTest, ATaskThatIsCancelledBeforeItBeginsNeverRuns) {
    {
        const CancellableTask task =
            scheduler.start([this](CancellationToken token) { return tick(token); });
    }
    scheduler.advance(100ms);
    EXPECT_EQ(ticks, 0);
}

TEST_F(SchedulerTest, AnExceptionEndsOnlyItsTask) {
    bool later = false;
    scheduler.startDetached([]() -> Task<> {
        throw std::runtime_error("expected by the test");
        co_return;
    });
    scheduler.post([&later] { later = true; });
    scheduler.runPosted();
    EXPECT_TRUE(later);
}

TEST(PendingTest, WaitersGetTheValueOrTheError) {
    Pending<int> value;
    Pending<int> failure;
    int got = 0;
    std::string error;
    const auto wait = [&]() -> Task<> {
        got = co_await value;
        try {
            co_await failure;
        } catch (const std::runtime_error& caught) {
            error = caught.what();
        }
    };
    const Task<> task = wait();
    value.resolve(7);
    EXPECT_EQ(got, 7);
    failure.reject(std::make_exception_ptr(std::runtime_error("no")));
    EXPECT_EQ(error, "no");
}
