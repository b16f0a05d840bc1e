#include "views/support/AnimationClock.h"

namespace quorvin::testing {

AnimationClock::AnimationClock() {
    m_driver.install();
    m_endless.start();
    advance(std::chrono::milliseconds(1)); // what has just been started counts from here
}

AnimationClock::~AnimationClock() {
    m_endless.stop();
    m_driver.uninstall();
}

void AnimationClock::Driver::advanceBy(std::chrono::milliseconds step) {
    m_now += step.count();
    advanceAnimation();
}

} // namespace quorvin::testing
