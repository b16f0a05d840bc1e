#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

namespace quorvin::bench {

/// The smallest of `values` that is not exceeded by at least `share` of them, from 0 to 1.
inline double quantile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    const auto rank =
        static_cast<std::size_t>(std::ceil(share * static_cast<double>(values.size())));
    return values.at(rank == 0 ? 0 : rank - 1);
}

} // namespace quorvin::bench
