#pragma once

#include <QObject>

#include <optional>

namespace quorvin {

/// What the ring shows of the microphone level and of a recording's beginning and end, moved on by
/// its frame timer. It has no clock: whoever owns it fires the timer that it schedules, by `tick`.
class WaveRingState : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// 1/60 more at each tick, whatever the timer's rate: a slower timer slows the motion.
    [[nodiscard]] double time() const { return m_time; }
    [[nodiscard]] double smoothLevel() const { return m_smoothLevel; }
    [[nodiscard]] double peakLevel() const { return m_peakLevel; }
    /// Of the figure at rest, in radians.
    [[nodiscard]] double breathPhase() const { return m_breathPhase; }
    /// Whether the shock ring is running.
    [[nodiscard]] bool showImpact() const { return m_showImpact; }
    /// Its progress, 0 to 1.
    [[nodiscard]] double impactPhase() const { return m_impactPhase; }
    /// Whether it tells of a recording's beginning; otherwise of its end.
    [[nodiscard]] bool impactIsRecording() const { return m_impactIsRecording; }
    /// Ticks a second of the one frame timer, if there is one.
    [[nodiscard]] std::optional<double> timer() const { return m_timer; }

    /// The view has appeared. What goes on at that moment counts as just begun.
    void appear(double level, bool isRecording, bool isTranscribing, bool isEnabled);
    /// The view has disappeared: no ticks until it appears again. The values stay.
    void disappear();
    /// At each change of one of them, while the view is there.
    void updateInputs(double level, bool isRecording, bool isTranscribing, bool isEnabled);
    /// Moves everything on by one frame.
    void tick();

Q_SIGNALS:
    /// After every tick.
    void changed();
    /// A timer takes the place of the former, if there was one, and its first interval begins now.
    void timerScheduled(double fps);
    void timerDropped();

private:
    void scheduleTimer(double fps);
    void startImpact(bool isRecording);

    double m_time = 0;
    double m_smoothLevel = 0;
    double m_peakLevel = 0;
    double m_breathPhase = 0;
    double m_impactPhase = 0;
    bool m_showImpact = false;
    bool m_impactIsRecording = false;
    double m_cachedLevel = 0;
    bool m_cachedIsRecording = false;
    bool m_cachedIsTranscribing = false;
    [[maybe_unused]] bool m_cachedIsEnabled = true;           // nothing reads it, on purpose
    [[maybe_unused]] std::optional<quintptr> m_displayLink{}; // reserved, as the next
    [[maybe_unused]] double m_lastTimestamp = 0;
    std::optional<double> m_timer; // ticks a second
};

} // namespace quorvin
