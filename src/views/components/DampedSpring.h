#pragma once

namespace quorvin {

/// A unit mass on a damped spring, described as designers of animations do: `response` is the time
/// in seconds of one undamped swing, `damping` the part of the critical damping, 0 to 1. In the
/// terms of mechanics the stiffness is (2 pi / response)^2 and the friction 4 pi damping /
/// response.
struct DampedSpring {
    struct State {
        double offset = 0;   ///< from the place of rest
        double velocity = 0; ///< of the offset, per second
    };

    double response = 0.5;
    double damping = 0.8;

    /// Where it is after `seconds`, by the exact solution of the equation of motion.
    [[nodiscard]] State after(State start, double seconds) const;
};

} // namespace quorvin
