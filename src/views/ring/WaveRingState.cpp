#include "views/ring/WaveRingState.h"

#include <algorithm>

namespace quorvin {

namespace {

constexpr double activeFps = 15;
constexpr double idleFps = 2;

constexpr double timePerTick = 1.0 / 60;
constexpr double peakDecay = 0.96;
constexpr double transcribingBreath = 1.0 / 24;
constexpr double idleBreath = 1.0 / 75;
/// Per tick, so that at rest the ring takes a long time: deliberate.
constexpr double impactStep = 0.03;

} // namespace

void WaveRingState::appear(double level, bool isRecording, bool isTranscribing, bool isEnabled) {
    if (!m_timer) {
        scheduleTimer(idleFps);
        m_cachedIsRecording = m_cachedIsRecording && !isRecording;
    }
    updateInputs(level, isRecording, isTranscribing, isEnabled);
}

void WaveRingState::disappear() {
    if (m_timer) {
        m_timer.reset();
        Q_EMIT timerDropped();
    }
}

void WaveRingState::updateInputs(double level, bool isRecording, bool isTranscribing,
                                 bool isEnabled) {
    if (isRecording != m_cachedIsRecording) {
        startImpact(isRecording);
    }
    m_cachedLevel = level;
    m_cachedIsRecording = isRecording;
    m_cachedIsTranscribing = isTranscribing;
    m_cachedIsEnabled = isEnabled;

    const double wantedFps = isRecording || isTranscribing ? activeFps : idleFps;
    if (m_timer != wantedFps) {
        scheduleTimer(wantedFps);
    }
}

void WaveRingState::tick() {
    m_time += timePerTick;

    const bool rises = m_smoothLevel < m_cachedLevel;
    const double rate = m_cachedIsRecording ? (rises ? 0.5 : 0.12) : (rises ? 0.15 : 0.08);
    m_smoothLevel += (m_cachedLevel - m_smoothLevel) * rate;
    m_peakLevel = m_peakLevel < m_cachedLevel ? m_cachedLevel : m_peakLevel * peakDecay;

    if (m_cachedIsTranscribing) {
        m_breathPhase += transcribingBreath;
    } else if (!m_cachedIsRecording) {
        m_breathPhase += idleBreath;
    }

    if (m_showImpact) {
        m_impactPhase += impactStep;
        if (m_impactPhase >= 1) {
            m_impactPhase = 1;
            m_showImpact = false;
        }
    }
    Q_EMIT changed();
}

void WaveRingState::scheduleTimer(double fps) {
    m_timer = std::max(fps, 1.0);
    Q_EMIT timerScheduled(*m_timer);
}

void WaveRingState::startImpact(bool isRecording) {
    m_impactPhase = 0;
    m_showImpact = true;
    m_impactIsRecording = isRecording;
}

} // namespace quorvin
