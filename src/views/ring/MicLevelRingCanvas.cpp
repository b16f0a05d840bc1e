#include "views/ring/MicLevelRingCanvas.h"

#include "views/ring/RingStyles.h"

#include <cmath>

namespace quorvin {

MicLevelRingCanvas::MicLevelRingCanvas(QQuickItem* parent) : DrawnItem(parent) {
    connect(&m_state, &WaveRingState::changed, this, &QQuickItem::update);
    connect(&m_state, &WaveRingState::timerScheduled, this, [this](double fps) {
        Q_EMIT timerScheduled(static_cast<int>(std::lround(1000 / fps)));
    });
    connect(&m_state, &WaveRingState::timerDropped, this, &MicLevelRingCanvas::timerDropped);
}

void MicLevelRingCanvas::setLevel(double level) {
    if (assign(m_level, level)) {
        pushInputs();
    }
}

void MicLevelRingCanvas::setIsRecording(bool is) {
    if (assign(m_isRecording, is)) {
        pushInputs();
        update();
    }
}

void MicLevelRingCanvas::setIsTranscribing(bool is) {
    if (assign(m_isTranscribing, is)) {
        pushInputs();
        update();
    }
}

void MicLevelRingCanvas::setIsEnabled(bool is) {
    if (assign(m_isEnabled, is)) {
        pushInputs();
    }
}

void MicLevelRingCanvas::setAnimationStyle(const QString& style) {
    if (assign(m_animationStyle, style)) {
        update();
    }
}

void MicLevelRingCanvas::setIsShown(bool is) {
    if (!assign(m_isShown, is) || !isComponentComplete()) {
        return;
    }
    if (is) {
        appear();
    } else {
        m_state.disappear();
    }
}

void MicLevelRingCanvas::componentComplete() {
    DrawnItem::componentComplete();
    if (m_isShown) {
        appear();
    }
}

void MicLevelRingCanvas::appear() {
    m_state.appear(m_level, m_isRecording, m_isTranscribing, m_isEnabled);
}

/// Not while the view is gone: it tells when it appears again.
void MicLevelRingCanvas::pushInputs() {
    if (m_state.timer()) {
        m_state.updateInputs(m_level, m_isRecording, m_isTranscribing, m_isEnabled);
    }
}

RingFrame MicLevelRingCanvas::frame() const {
    return {
        .size = size(),
        .mode = m_isRecording      ? RingMode::recording
                : m_isTranscribing ? RingMode::transcribing
                                   : RingMode::idle,
        .time = m_state.time(),
        .smoothLevel = m_state.smoothLevel(),
        .peakLevel = m_state.peakLevel(),
        .breathPhase = m_state.breathPhase(),
        .showImpact = m_state.showImpact(),
        .impactPhase = m_state.impactPhase(),
        .impactIsRecording = m_state.impactIsRecording(),
    };
}

PlacedImage MicLevelRingCanvas::drawn(double devicePixelRatio) const {
    m_picture.clear();
    drawRing(m_picture, frame(), m_animationStyle);
    const QImage image = m_raster.painted(m_picture, size(), devicePixelRatio);
    return {image, QRectF(QPointF(0, 0), QSizeF(image.size()) / devicePixelRatio)};
}

} // namespace quorvin
