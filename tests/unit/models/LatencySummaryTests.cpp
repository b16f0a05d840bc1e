#include "models/LatencySummary.h"
#include "services/records/PerformanceMetrics.h"
#include "support/VirtualScheduler.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString green = u"22c55e"_s;
const QString amber = u"f59e0b"_s;
const QString red = u"ef4444"_s;

} // namespace

TEST(LatencyColor, LetsATranscriptionTakeLonger) {
    EXPECT_EQ(latencyColor(u"Transcription"_s, 1200), green);
    EXPECT_EQ(latencyColor(u"Transcription"_s, 1200.1), amber);
    EXPECT_EQ(latencyColor(u"Transcription"_s, 2000), amber);
    EXPECT_EQ(latencyColor(u"Transcription"_s, 2000.1), red);
}

TEST(LatencyColor, IsTheSameForAllOtherKinds) {
    for (const QString& kind : {u"Send"_s, u"Session Scan"_s, u"Model Load"_s}) {
        EXPECT_EQ(latencyColor(kind, 0), green);
        EXPECT_EQ(latencyColor(kind, 300), green);
        EXPECT_EQ(latencyColor(kind, 301), amber);
        EXPECT_EQ(latencyColor(kind, 500), amber);
        EXPECT_EQ(latencyColor(kind, 501), red);
    }
}

TEST(LatencySummary, HasARowForEachKind) {
    VirtualScheduler scheduler;
    PerformanceMetrics metrics(scheduler);
    metrics.record(PerformanceMetrics::Kind::sendKeystrokes, 10.4);
    metrics.record(PerformanceMetrics::Kind::sendKeystrokes, 30);
    metrics.record(PerformanceMetrics::Kind::sendKeystrokes, 400);
    const QList<LatencySummary> rows = summarize(metrics);
    EXPECT_EQ(rows, (QList<LatencySummary>{{u"Transcription"_s, 0, {}},
                                           {u"Send"_s,
                                            3,
                                            {{u"last"_s, u"400 ms"_s, amber},
                                             {u"avg"_s, u"147 ms"_s, green},
                                             {u"min"_s, u"10 ms"_s, green},
                                             {u"max"_s, u"400 ms"_s, amber}}},
                                           {u"Session Scan"_s, 0, {}},
                                           {u"Model Load"_s, 0, {}}}));
}
