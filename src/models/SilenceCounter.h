#pragma once

namespace quorvin {

/// Decides when a take has been silent for long enough. One object a take.
class SilenceCounter {
public:
    static constexpr double tickSeconds = 0.033;
    /// Nothing counts as silence before the take is this old, in seconds.
    static constexpr double grace = 1.5;
    /// Levels below this one, from 0 to 1, are silent; a reading at it is not.
    static constexpr double threshold = 0.015F;

    /// Looks at one tick of a take that has lasted for `duration` seconds. True when the silence
    /// has lasted for `timeout` seconds now.
    [[nodiscard]] bool tick(double level, double duration, int timeout) {
        if (duration <= grace) {
            return false;
        }
        m_silence = level < threshold ? m_silence + tickSeconds : 0;
        return level < threshold && m_silence >= timeout;
    }

private:
    double m_silence = 0;
};

} // namespace quorvin
