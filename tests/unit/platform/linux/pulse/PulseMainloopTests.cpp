#include "platform/linux/pulse/PulseMainloop.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace quorvin {
namespace {

using namespace std::chrono_literals;

constexpr auto generous = 20s;
constexpr auto endless = 1h;

/// A loop, and something that it listens to as it would to a server.
class PulseMainloopTest : public ::testing::Test {
protected:
    PulseMainloopTest() {
        const PulseMainloop::Lock lock(m_mainloop);
        m_event = m_mainloop.api()->io_new(
            m_mainloop.api(), m_line, PA_IO_EVENT_INPUT,
            [](pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void* self) {
                static_cast<PulseMainloopTest*>(self)->read();
            },
            this);
    }
    ~PulseMainloopTest() override {
        {
            const PulseMainloop::Lock lock(m_mainloop);
            m_mainloop.api()->io_free(m_event);
            m_rests.clear();
        }
        ::close(m_line);
    }

    void send() { EXPECT_EQ(::eventfd_write(m_line, 1), 0); }

    /// When it returns true, the loop has something behind it and rests, or sleeps till the next.
    bool rest(std::chrono::milliseconds duration) {
        send();
        {
            const PulseMainloop::Lock lock(m_mainloop);
            m_rests.push_back(std::make_unique<PulseMainloop::Rest>(m_mainloop, duration));
        }
        return hasGot(1);
    }

    /// Doesn't wait with the loop's own means, so that the loop goes on resting.
    static bool happens(const std::function<bool()>& condition,
                        PulseMainloop::Clock::duration patience = generous) {
        const auto end = PulseMainloop::Clock::now() + patience;
        while (!condition() && PulseMainloop::Clock::now() < end) {
            std::this_thread::yield();
        }
        return condition();
    }

    bool hasGot(eventfd_t amount) {
        return happens([&] { return m_got == amount; });
    }

    PulseMainloop m_mainloop;
    std::vector<std::unique_ptr<PulseMainloop::Rest>> m_rests; // under the lock
    std::atomic<eventfd_t> m_got = 0;

private:
    void read() {
        eventfd_t amount = 0;
        EXPECT_EQ(::eventfd_read(m_line, &amount), 0);
        m_got += amount;
        m_mainloop.wake();
    }

    // Each read takes one, and leaves the rest to the next: as the sound library reads.
    int m_line = ::eventfd(0, EFD_NONBLOCK | EFD_SEMAPHORE);
    pa_io_event* m_event = nullptr;
};

TEST_F(PulseMainloopTest, DuringARestWhatComesGathersUntilSomebodyUsesTheLoop) {
    ASSERT_TRUE(rest(endless));
    eventfd_t sent = 1;
    bool gathers = false;
    for (int i = 0; i < 100 && !gathers; ++i) { // the first ones may end a sleep
        send();
        ++sent;
        gathers = !happens([&] { return m_got == sent; }, 50ms);
    }
    EXPECT_TRUE(gathers);
    for (int i = 0; i < 100; ++i) {
        send();
        ++sent;
    }
    { const PulseMainloop::Lock lock(m_mainloop); }
    EXPECT_TRUE(hasGot(sent));
}

TEST_F(PulseMainloopTest, OfSeveralRestsTheShortestCounts) {
    ASSERT_TRUE(rest(endless));
    {
        const PulseMainloop::Lock lock(m_mainloop);
        m_rests.push_back(std::make_unique<PulseMainloop::Rest>(m_mainloop, 0ms));
        m_rests.push_back(std::make_unique<PulseMainloop::Rest>(m_mainloop, endless));
    }
    for (eventfd_t i = 2; i <= 4; ++i) {
        send();
        EXPECT_TRUE(hasGot(i));
    }
}

TEST_F(PulseMainloopTest, ARestEnds) {
    ASSERT_TRUE(rest(5ms));
    for (eventfd_t i = 2; i <= 4; ++i) {
        send();
        EXPECT_TRUE(hasGot(i));
    }
}

TEST_F(PulseMainloopTest, WhoWaitsForAnAnswerWaitsForNoRest) {
    ASSERT_TRUE(rest(endless));
    const PulseMainloop::Lock lock(m_mainloop);
    std::thread answer([this] {
        for (int i = 0; i < 3; ++i) {
            send();
        }
    });
    EXPECT_TRUE(m_mainloop.waitUntil(PulseMainloop::Clock::now() + generous,
                                     [this] { return m_got == 4; }));
    answer.join();
}

TEST_F(PulseMainloopTest, ATimerWaitsForNoRest) {
    ASSERT_TRUE(rest(endless));
    std::atomic<bool> isDue = false;
    std::optional<PulseMainloop::Timer> timer;
    {
        const PulseMainloop::Lock lock(m_mainloop);
        timer.emplace(m_mainloop, 5ms, [&isDue] { isDue = true; });
    }
    EXPECT_TRUE(happens([&isDue] { return isDue.load(); }));
    const PulseMainloop::Lock lock(m_mainloop);
    timer.reset();
}

TEST_F(PulseMainloopTest, NobodyWaitsForLongerThanTheDeadline) {
    const PulseMainloop::Lock lock(m_mainloop);
    EXPECT_FALSE(m_mainloop.waitUntil(PulseMainloop::Clock::now() + 1ms, [] { return false; }));
}

TEST_F(PulseMainloopTest, ItEndsDuringARest) {
    EXPECT_TRUE(rest(endless));
}

} // namespace
} // namespace quorvin
