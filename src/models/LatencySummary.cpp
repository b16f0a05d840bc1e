#include "models/LatencySummary.h"

#include "services/records/PerformanceMetrics.h"

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

struct Limits {
    double slow; // milliseconds
    double bad;
};

constexpr Limits transcriptionLimits{1200, 2000};
constexpr Limits otherLimits{300, 500};

LatencyFigure figure(const QString& kind, const QString& name, double ms) {
    return {name, u"%1 ms"_s.arg(ms, 0, 'f', 0), latencyColor(kind, ms)};
}

} // namespace

QList<LatencySummary> summarize(const PerformanceMetrics& metrics) {
    QList<LatencySummary> rows;
    for (const PerformanceMetrics::Kind kind : PerformanceMetrics::allKinds) {
        const PerformanceMetrics::Stats stats = metrics.stats(kind);
        LatencySummary row{PerformanceMetrics::rawValue(kind), stats.count, {}};
        if (stats.count > 0) {
            row.figures = {figure(row.label, u"last"_s, stats.lastMs),
                           figure(row.label, u"avg"_s, stats.avgMs),
                           figure(row.label, u"min"_s, stats.minMs),
                           figure(row.label, u"max"_s, stats.maxMs)};
        }
        rows.append(row);
    }
    return rows;
}

QString latencyColor(const QString& kind, double ms) {
    const Limits& limits = kind == u"Transcription" ? transcriptionLimits : otherLimits;
    if (ms > limits.bad) {
        return u"ef4444"_s;
    }
    return ms > limits.slow ? u"f59e0b"_s : u"22c55e"_s;
}

} // namespace quorvin
