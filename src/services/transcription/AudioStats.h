#pragma once

#include <span>

namespace quorvin {

/// How loud a take is, full scale being 1.0.
struct AudioStats {
    float peak = 0; ///< the largest absolute sample value
    float rms = 0;  ///< the square root of the mean of the squared samples
};

/// Both are 0 for no samples. Any thread.
[[nodiscard]] AudioStats audioStats(std::span<const float> samples);

} // namespace quorvin
