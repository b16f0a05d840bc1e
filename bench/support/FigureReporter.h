#pragma once

#include <benchmark/benchmark.h>

namespace quorvin::bench {

/// Prints one line per figure, "name value unit":
///
///     spectrum 4.5 us                  the time of one iteration, in the benchmark's own unit
///     engine_overhead.child 0.9 ms     a counter of it, here "child_ms"
///
/// Times are processor time, or time on the wall where the benchmark asks for it. A counter's name
/// ends in its unit, after the last underscore. Of a benchmark with repetitions the medians are
/// printed. Errors go to the error stream.
class FigureReporter final : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

private:
    void reportRun(const Run& run);
    void reportFigure(const std::string& name, double value, const std::string& unit);

    bool m_hasFailed = false;
};

} // namespace quorvin::bench
