#include "views/components/GaussianBlur.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace quorvin {

namespace {

/// One half of the curve, from the middle outwards; the whole sums to 1.
std::vector<float> halfOfGaussian(double radius) {
    constexpr double reachInRadii = 1.5; // where 0.3 % of it are left
    const double sigma = radius / 2;
    std::vector<float> weights{1};
    float sum = 1;
    for (int i = 1; i <= std::ceil(radius * reachInRadii); ++i) {
        weights.push_back(static_cast<float>(std::exp(-i * i / (2 * sigma * sigma))));
        sum += 2 * weights.back();
    }
    for (float& weight : weights) {
        weight /= sum;
    }
    return weights;
}

/// Blurs along the rows and turns the image on its side; twice is both ways and upright again.
QImage blurredAndTurned(const QImage& mask, const std::vector<float>& weights) {
    QImage result(mask.height(), mask.width(), QImage::Format_Alpha8);
    const auto reach = static_cast<std::ptrdiff_t>(weights.size()) - 1;
    // With room at both ends, so that no step has to look where the row ends.
    std::vector<float> row(static_cast<std::size_t>(mask.width() + 2 * reach));
    for (int y = 0; y < mask.height(); ++y) {
        const uchar* const values = mask.constScanLine(y);
        std::copy(values, values + mask.width(), row.begin() + reach);
        for (int x = 0; x < mask.width(); ++x) {
            const auto middle = row.cbegin() + reach + x;
            float sum = weights.front() * *middle;
            for (std::ptrdiff_t i = 1; i <= reach; ++i) {
                sum += weights[static_cast<std::size_t>(i)] * (middle[-i] + middle[i]);
            }
            result.scanLine(x)[y] = static_cast<uchar>(std::lround(sum));
        }
    }
    return result;
}

} // namespace

QImage gaussianBlur(const QImage& mask, double radius) {
    if (mask.isNull() || radius <= 0) {
        return mask;
    }
    const std::vector<float> weights = halfOfGaussian(radius);
    return blurredAndTurned(blurredAndTurned(mask, weights), weights);
}

} // namespace quorvin
