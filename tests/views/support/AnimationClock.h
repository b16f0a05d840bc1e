#pragma once

#include <QAbstractAnimation>
#include <QAnimationDriver>

#include <chrono>

namespace quorvin::testing {

/// The time of QML's animations and timers, which passes only when the test says so. One at a time.
class AnimationClock {
public:
    AnimationClock();
    ~AnimationClock();
    AnimationClock(const AnimationClock&) = delete;
    AnimationClock& operator=(const AnimationClock&) = delete;

    /// Lets that much time pass in one frame.
    void advance(std::chrono::milliseconds step) { m_driver.advanceBy(step); }

private:
    class Driver final : public QAnimationDriver {
    public:
        void advanceBy(std::chrono::milliseconds step);
        [[nodiscard]] qint64 elapsed() const override { return m_now; }

    private:
        qint64 m_now = 0; // in milliseconds
    };
    /// Qt takes its own clock when nothing but timers run; so something else always does.
    class Endless final : public QAbstractAnimation {
    public:
        [[nodiscard]] int duration() const override { return -1; }

    protected:
        void updateCurrentTime(int /*now*/) override {}
    };

    Driver m_driver;
    Endless m_endless;
};

} // namespace quorvin::testing
