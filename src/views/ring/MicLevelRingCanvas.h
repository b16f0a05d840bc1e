#pragma once

#include "views/components/DrawnItem.h"
#include "views/ring/RingFrame.h"
#include "views/ring/RingPicture.h"
#include "views/ring/RingRaster.h"
#include "views/ring/WaveRingState.h"

#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// The animated figure: what the program does, and how loud the microphone is. A frame is painted
/// when its timer has fired, and when what the program does or the style has changed; in between
/// nothing is.
class MicLevelRingCanvas : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    /// 0 to 1.
    Q_PROPERTY(double level READ level WRITE setLevel)
    Q_PROPERTY(bool isRecording READ isRecording WRITE setIsRecording)
    Q_PROPERTY(bool isTranscribing READ isTranscribing WRITE setIsTranscribing)
    /// Doesn't show.
    Q_PROPERTY(bool isEnabled READ isEnabledInput WRITE setIsEnabled)
    /// A name that `drawRing` knows.
    Q_PROPERTY(QString animationStyle READ animationStyle WRITE setAnimationStyle)
    /// Whether the view can be seen at all. While it can't, there is no timer.
    Q_PROPERTY(bool isShown READ isShown WRITE setIsShown)

public:
    explicit MicLevelRingCanvas(QQuickItem* parent = nullptr);

    [[nodiscard]] double level() const { return m_level; }
    void setLevel(double level);
    [[nodiscard]] bool isRecording() const { return m_isRecording; }
    void setIsRecording(bool is);
    [[nodiscard]] bool isTranscribing() const { return m_isTranscribing; }
    void setIsTranscribing(bool is);
    [[nodiscard]] bool isEnabledInput() const { return m_isEnabled; }
    void setIsEnabled(bool is);
    [[nodiscard]] QString animationStyle() const { return m_animationStyle; }
    void setAnimationStyle(const QString& style);
    [[nodiscard]] bool isShown() const { return m_isShown; }
    void setIsShown(bool is);

    /// The timer has fired.
    Q_INVOKABLE void tick() { m_state.tick(); }

Q_SIGNALS:
    /// A repeating timer of that many milliseconds takes the place of the former, if there was one.
    void timerScheduled(int interval);
    void timerDropped();

protected:
    [[nodiscard]] PlacedImage drawn(double devicePixelRatio) const override;
    void componentComplete() override;

private:
    void pushInputs();
    void appear();
    [[nodiscard]] RingFrame frame() const;

    double m_level = 0;
    bool m_isRecording = false;
    bool m_isTranscribing = false;
    bool m_isEnabled = true;
    QString m_animationStyle;
    bool m_isShown = false;
    WaveRingState m_state;
    // Memory that is used again from frame to frame.
    mutable RingPicture m_picture;
    mutable RingRaster m_raster;
};

} // namespace quorvin
