#pragma once

#include "views/compact/CompactWaveform.h"
#include "views/components/DrawnItem.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// The equalizer, and the line in its place at rest. A change that doesn't show (the clock during a
/// take, the bars at rest) has nothing painted.
class CompactWaveformCanvas : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    /// Nominally 0 to 1, from the left to the right.
    Q_PROPERTY(QList<double> barHeights READ barHeights WRITE setBarHeights)
    Q_PROPERTY(bool isRecording READ isRecording WRITE setIsRecording)
    Q_PROPERTY(bool isTranscribing READ isTranscribing WRITE setIsTranscribing)
    /// Milliseconds.
    Q_PROPERTY(double elapsed READ elapsed WRITE setElapsed)
    /// Of the line.
    Q_PROPERTY(QColor accentColor READ accentColor WRITE setAccentColor)

public:
    using DrawnItem::DrawnItem;

    [[nodiscard]] QList<double> barHeights() const { return m_state.barHeights; }
    void setBarHeights(const QList<double>& heights);
    [[nodiscard]] bool isRecording() const { return m_state.isRecording; }
    void setIsRecording(bool is);
    [[nodiscard]] bool isTranscribing() const { return m_state.isTranscribing; }
    void setIsTranscribing(bool is);
    [[nodiscard]] double elapsed() const { return m_state.elapsed; }
    void setElapsed(double milliseconds);
    [[nodiscard]] QColor accentColor() const;
    void setAccentColor(const QColor& color);

protected:
    [[nodiscard]] PlacedImage drawn(double devicePixelRatio) const override;

private:
    [[nodiscard]] bool showsBars() const { return m_state.isRecording || m_state.isTranscribing; }

    WaveformState m_state;
};

} // namespace quorvin
