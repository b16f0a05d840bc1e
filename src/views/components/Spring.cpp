#include "views/components/Spring.h"

#include <cmath>

namespace quorvin {

namespace {

constexpr double smallestOffset = 0.001;
constexpr double smallestVelocity = 0.01; // per second

} // namespace

Spring::Spring(QObject* parent) : QObject(parent) {}

void Spring::componentComplete() {
    m_isComplete = true;
}

void Spring::setTo(double to) {
    if (to == m_to) {
        return;
    }
    const double value = this->value();
    m_to = to;
    if (m_isComplete) {
        m_state.offset = value - to;
        if (m_motion.state() != QAbstractAnimation::Running) {
            m_time = 0;
            m_motion.start();
        }
    } else {
        Q_EMIT valueChanged();
    }
    Q_EMIT toChanged();
}

void Spring::setResponse(double response) {
    if (response != m_spring.response) {
        m_spring.response = response;
        Q_EMIT responseChanged();
    }
}

void Spring::setDamping(double damping) {
    if (damping != m_spring.damping) {
        m_spring.damping = damping;
        Q_EMIT dampingChanged();
    }
}

void Spring::moveTo(int now) {
    constexpr double secondsPerMillisecond = 0.001;
    m_state = m_spring.after(m_state, (now - m_time) * secondsPerMillisecond);
    m_time = now;
    if (std::abs(m_state.offset) < smallestOffset &&
        std::abs(m_state.velocity) < smallestVelocity) {
        m_state = {};
        m_motion.stop();
    }
    Q_EMIT valueChanged();
}

} // namespace quorvin
