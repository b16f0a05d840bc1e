#include "FigureReporter.h"

#include <algorithm>
#include <ostream>

namespace quorvin::bench {

namespace {

bool isMedian(const benchmark::BenchmarkReporter::Run& run) {
    return run.aggregate_name == "median";
}

} // namespace

bool FigureReporter::ReportContext(const Context& /*context*/) {
    return true;
}

void FigureReporter::ReportRuns(const std::vector<Run>& runs) {
    const bool isRepeated = std::any_of(runs.begin(), runs.end(), isMedian);
    for (const Run& run : runs) {
        if (run.error_occurred) {
            m_hasFailed = true;
            GetErrorStream() << run.benchmark_name() << ": " << run.error_message << std::endl;
        } else if (!isRepeated || isMedian(run)) {
            reportRun(run);
        }
    }
}

void FigureReporter::reportRun(const Run& run) {
    const std::string& arguments = run.run_name.args;
    const std::string name =
        run.run_name.function_name + (arguments.empty() ? "" : "/" + arguments);
    // A case that measures the time on the wall says so, by UseRealTime or UseManualTime.
    const bool isWallTime = !run.run_name.time_type.empty();
    reportFigure(name, isWallTime ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime(),
                 benchmark::GetTimeUnitString(run.time_unit));
    for (const auto& [counter, value] : run.counters) {
        const std::size_t separator = counter.rfind('_');
        if (separator == std::string::npos) {
            m_hasFailed = true;
            GetErrorStream() << name << ": the counter " << counter << " names no unit"
                             << std::endl;
            continue;
        }
        reportFigure(name + "." + counter.substr(0, separator), value.value,
                     counter.substr(separator + 1));
    }
}

void FigureReporter::reportFigure(const std::string& name, double value, const std::string& unit) {
    GetOutputStream() << name << ' ' << value << ' ' << unit << std::endl;
}

} // namespace quorvin::bench
