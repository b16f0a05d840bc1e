#include "views/components/DampedSpring.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quorvin {

DampedSpring::State DampedSpring::after(State start, double seconds) const {
    const double frequency = 2 * std::numbers::pi / response; // undamped, in radians per second
    const double decay = std::clamp(damping, 0.0, 1.0) * frequency;
    const double swing = std::sqrt(frequency * frequency - decay * decay);
    const double envelope = std::exp(-decay * seconds);
    const double lead = start.velocity + decay * start.offset;
    const double cosine = std::cos(swing * seconds);
    // sin(w t) / w, which is t where critical damping leaves no swing
    const double sine = swing > 0 ? std::sin(swing * seconds) / swing : seconds;
    return {
        .offset = envelope * (start.offset * cosine + lead * sine),
        .velocity = envelope * (start.velocity * cosine -
                                (decay * lead + (swing * swing) * start.offset) * sine),
    };
}

} // namespace quorvin
