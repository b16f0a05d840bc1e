#pragma once

#include "platform/ProcessRunner.h"

#include <chrono>
#include <cmath>
#include <vector>

#include <benchmark/benchmark.h>

namespace quorvin::bench {

/// A loud take of 16 kHz samples.
inline std::vector<float> take(int seconds) {
    std::vector<float> samples(static_cast<std::size_t>(seconds) * 16000);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = 0.5F * std::sin(static_cast<float>(i) * 0.05F);
    }
    return samples;
}

/// Passes everything on, and notes when the child runs and how it ends.
class StampingRunner final : public ProcessRunner {
public:
    explicit StampingRunner(ProcessRunner& actual) : m_actual(actual) {}

    [[nodiscard]] Task<ProcessResult> run(QString program, QStringList arguments) override {
        const Task<ProcessResult> child = m_actual.run(program, arguments);
        started = std::chrono::steady_clock::now();
        const ProcessResult result = co_await child;
        exitStatus = result.exitStatus;
        co_return result;
    }

    std::chrono::steady_clock::time_point started;
    int exitStatus = -1;

private:
    ProcessRunner& m_actual;
};

/// For cases that take the time of each run themselves.
inline void medianOfSingleRuns(benchmark::internal::Benchmark* benchmark) {
    benchmark->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(51)
        ->ReportAggregatesOnly();
}

} // namespace quorvin::bench
