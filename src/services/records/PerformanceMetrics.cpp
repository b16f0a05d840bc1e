#include "services/records/PerformanceMetrics.h"

#include <QLoggingCategory>

#include <algorithm>

namespace quorvin {

namespace {

Q_LOGGING_CATEGORY(lcPerformance, "com.quorvin.Performance", QtInfoMsg)

} // namespace

PerformanceMetrics::PerformanceMetrics(const Scheduler& scheduler, QObject* parent)
    : QObject(parent), m_scheduler(scheduler) {
    s_shared = this;
}

PerformanceMetrics::~PerformanceMetrics() {
    if (s_shared == this) {
        s_shared = nullptr;
    }
}

PerformanceMetrics& PerformanceMetrics::shared() {
    Q_ASSERT(s_shared);
    return *s_shared;
}

QString PerformanceMetrics::rawValue(Kind kind) {
    switch (kind) {
    case Kind::transcription:
        return QStringLiteral("Transcription");
    case Kind::sendKeystrokes:
        return QStringLiteral("Send");
    case Kind::sessionScan:
        return QStringLiteral("Session Scan");
    case Kind::modelLoad:
        return QStringLiteral("Model Load");
    }
    return {};
}

void PerformanceMetrics::record(Kind kind, double durationMs) {
    QList<Sample> samples = m_samples;
    if (samples.size() >= maxSamples) {
        samples = samples.last(maxSamples - 1);
    }
    samples.append({.kind = kind, .durationMs = durationMs, .timestamp = m_scheduler.wallTime()});
    m_samples = samples;
}

PerformanceMetrics::Stats PerformanceMetrics::stats(Kind kind) const {
    Stats stats;
    double sum = 0;
    for (const Sample& sample : m_samples.value()) {
        if (sample.kind != kind) {
            continue;
        }
        const double duration = sample.durationMs;
        stats.minMs = stats.count == 0 ? duration : std::min(stats.minMs, duration);
        stats.maxMs = stats.count == 0 ? duration : std::max(stats.maxMs, duration);
        stats.lastMs = duration;
        sum += duration;
        ++stats.count;
    }
    if (stats.count > 0) {
        stats.avgMs = sum / stats.count;
    }
    return stats;
}

void PerformanceMetrics::clear() {
    m_samples = QList<Sample>();
}

Scheduler::Duration PerformanceMetrics::beginInterval(Kind kind) const {
    qCDebug(lcPerformance, "pipeline begin: %s", qUtf8Printable(rawValue(kind)));
    return m_scheduler.monotonicTime();
}

void PerformanceMetrics::endInterval(Kind kind, Scheduler::Duration start) {
    const std::chrono::duration<double, std::milli> duration = m_scheduler.monotonicTime() - start;
    qCDebug(lcPerformance, "pipeline end: %s %.1fms", qUtf8Printable(rawValue(kind)),
            duration.count());
    record(kind, duration.count());
}

} // namespace quorvin
