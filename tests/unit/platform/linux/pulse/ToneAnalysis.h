#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <span>
#include <vector>

/// Sines, and what is left of them.
namespace quorvin::testing {

/// `frames` frames of a sine, the same in each of `channels` interleaved channels.
inline std::vector<float> tone(double frequency, double amplitude, double sampleRate,
                               std::size_t frames, std::size_t channels = 1) {
    std::vector<float> samples;
    samples.reserve(frames * channels);
    for (std::size_t frame = 0; frame < frames; ++frame) {
        const double phase =
            2 * std::numbers::pi * frequency * static_cast<double>(frame) / sampleRate;
        samples.insert(samples.end(), channels, static_cast<float>(amplitude * std::sin(phase)));
    }
    return samples;
}

/// A sine of known frequency found in samples, and the mean square of all that it does not explain.
struct SineFit {
    double amplitude = 0;
    double residualPower = 0;

    /// Signal to noise and distortion, in decibels.
    [[nodiscard]] double sinad() const {
        return 10 * std::log10(amplitude * amplitude / 2 / residualPower);
    }
};

/// Least squares over a sine, a cosine and a constant.
inline SineFit fitSine(std::span<const float> samples, double frequency, double sampleRate) {
    using Row = std::array<double, 4>;
    const auto basis = [=](std::size_t index) {
        const double phase =
            2 * std::numbers::pi * frequency * static_cast<double>(index) / sampleRate;
        return std::array<double, 3>{std::sin(phase), std::cos(phase), 1};
    };
    std::array<Row, 3> equations{};
    for (std::size_t index = 0; index < samples.size(); ++index) {
        const auto terms = basis(index);
        for (std::size_t row = 0; row < 3; ++row) {
            for (std::size_t column = 0; column < 3; ++column) {
                equations[row][column] += terms[row] * terms[column];
            }
            equations[row][3] += terms[row] * static_cast<double>(samples[index]);
        }
    }
    for (std::size_t pivot = 0; pivot < 3; ++pivot) {
        for (std::size_t row = 0; row < 3; ++row) {
            if (row == pivot) {
                continue;
            }
            const double factor = equations[row][pivot] / equations[pivot][pivot];
            for (std::size_t column = pivot; column < 4; ++column) {
                equations[row][column] -= factor * equations[pivot][column];
            }
        }
    }
    std::array<double, 3> weights{};
    for (std::size_t row = 0; row < 3; ++row) {
        weights[row] = equations[row][3] / equations[row][row];
    }
    double residual = 0;
    for (std::size_t index = 0; index < samples.size(); ++index) {
        const auto terms = basis(index);
        double difference = static_cast<double>(samples[index]);
        for (std::size_t row = 0; row < 3; ++row) {
            difference -= weights[row] * terms[row];
        }
        residual += difference * difference;
    }
    return {.amplitude = std::hypot(weights[0], weights[1]),
            .residualPower = residual / static_cast<double>(samples.size())};
}

/// Mean square.
inline double power(std::span<const float> samples) {
    double sum = 0;
    for (const float sample : samples) {
        sum += static_cast<double>(sample) * static_cast<double>(sample);
    }
    return sum / static_cast<double>(samples.size());
}

} // namespace quorvin::testing
