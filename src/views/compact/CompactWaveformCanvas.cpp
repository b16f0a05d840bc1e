#include "views/compact/CompactWaveformCanvas.h"

#include "views/compact/CompactWaveformRaster.h"

namespace quorvin {

void CompactWaveformCanvas::setBarHeights(const QList<double>& heights) {
    if (assign(m_state.barHeights, heights) && showsBars()) {
        update();
    }
}

void CompactWaveformCanvas::setIsRecording(bool is) {
    if (assign(m_state.isRecording, is)) {
        update();
    }
}

void CompactWaveformCanvas::setIsTranscribing(bool is) {
    if (assign(m_state.isTranscribing, is)) {
        update();
    }
}

void CompactWaveformCanvas::setElapsed(double milliseconds) {
    if (assign(m_state.elapsed, milliseconds) && (m_state.isTranscribing || !showsBars())) {
        update();
    }
}

QColor CompactWaveformCanvas::accentColor() const {
    const auto [red, green, blue] = m_state.accentColor;
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green),
                            static_cast<float>(blue));
}

void CompactWaveformCanvas::setAccentColor(const QColor& color) {
    const RgbColor channels{color.redF(), color.greenF(), color.blueF()};
    if (assign(m_state.accentColor, channels) && !showsBars()) {
        update();
    }
}

PlacedImage CompactWaveformCanvas::drawn(double devicePixelRatio) const {
    return rasterized(waveform::drawing(m_state, size()), size(), devicePixelRatio);
}

} // namespace quorvin
