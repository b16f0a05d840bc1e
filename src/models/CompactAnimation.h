#pragma once

#include <functional>
#include <span>

namespace quorvin {

/// One frame of the panel's equalizer, in numbers. Heights are nominally 0 to 1.
namespace CompactAnimation {

/// A random number, evenly spread over the closed range from `low` to `high`.
using Random = std::function<double(double low, double high)>;

/// Follows the level, upward fast and downward slowly.
[[nodiscard]] double smoothedLevel(double smoothed, double level);

/// Moves the bars toward the spectrum, with a flicker; a band that is missing counts as 0.
void stepSpectrum(std::span<double> heights, std::span<const double> bands, const Random& random);

/// Moves the bars in a restless wave while the engine works. `elapsed` is in milliseconds. Heights
/// may fall a little below 0.
void stepWaiting(std::span<double> heights, double elapsed, const Random& random);

} // namespace CompactAnimation

} // namespace quorvin
