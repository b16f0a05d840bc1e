#include "models/AppState.h"
#include "models/CompactAnimation.h"
#include "platform/Scheduler.h"

#include <QRandomGenerator>

#include <cmath>
#include <limits>
#include <random>

using namespace std::chrono_literals;

namespace quorvin {

namespace {

constexpr std::chrono::milliseconds activePeriod = 33ms;
constexpr std::chrono::milliseconds idlePeriod = 100ms;

double systemRandom(double low, double high) {
    // The distribution leaves out its upper limit.
    const double beyond = std::nextafter(high, std::numeric_limits<double>::max());
    return std::uniform_real_distribution(low, beyond)(*QRandomGenerator::global());
}

} // namespace

void AppState::startCompactAnimation() {
    m_compactAnimationTask =
        m_platform.scheduler.start([self = QPointer(this), &scheduler = m_platform.scheduler](
                                       CancellationToken token) -> Task<> {
            while (!token.isCancelled() && self) {
                self->updateCompactAnimation();
                const bool isActive = self->isRecording() || self->isTranscribing();
                co_await scheduler.sleep(isActive ? activePeriod : idlePeriod);
            }
        });
}

void AppState::stopCompactAnimation() {
    m_compactAnimationTask.cancel();
}

void AppState::updateCompactAnimation() {
    if (!isRecording() && !isTranscribing()) {
        m_compactElapsed = compactElapsed() + idlePeriod.count();
        return;
    }
    m_compactElapsed = compactElapsed() + activePeriod.count();
    m_compactIdleFrameCount = 0;
    m_compactSmoothLevel = CompactAnimation::smoothedLevel(compactSmoothLevel(), audioLevel());
    // Published once a frame and not bar by bar: views draw all of them together.
    QList<double> heights = compactBarHeights();
    if (isTranscribing()) { // first: a new take may run by now, and the bars still wait
        CompactAnimation::stepWaiting(heights, compactElapsed(), systemRandom);
    } else {
        CompactAnimation::stepSpectrum(heights, m_compactFftBands, systemRandom);
    }
    m_compactBarHeights = heights;
}

} // namespace quorvin
