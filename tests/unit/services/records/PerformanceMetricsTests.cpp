#include "services/records/PerformanceMetrics.h"
#include "support/LogCapture.h"
#include "support/VirtualScheduler.h"

#include <memory>
#include <optional>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::LogCapture;
using quorvin::testing::VirtualScheduler;
using Kind = PerformanceMetrics::Kind;

namespace {

class PerformanceMetricsTest : public ::testing::Test {
protected:
    VirtualScheduler scheduler;
    std::unique_ptr<PerformanceMetrics> metrics = std::make_unique<PerformanceMetrics>(scheduler);
};

} // namespace

TEST_F(PerformanceMetricsTest, TheKindsHaveTheirNamesAndOrder) {
    QStringList names;
    for (const Kind kind : PerformanceMetrics::allKinds) {
        names.append(PerformanceMetrics::rawValue(kind));
    }
    EXPECT_EQ(names,
              (QStringList{u"Transcription"_s, u"Send"_s, u"Session Scan"_s, u"Model Load"_s}));
}

TEST_F(PerformanceMetricsTest, TheFiftyFirstSamplePushesOutTheFirst) {
    for (int i = 1; i <= 50; ++i) {
        metrics->record(Kind::transcription, i);
    }
    EXPECT_EQ(metrics->samples().size(), 50);
    EXPECT_EQ(metrics->samples().front().durationMs, 1.0);
    metrics->record(Kind::modelLoad, 51);
    EXPECT_EQ(metrics->samples().size(), 50);
    EXPECT_EQ(metrics->samples().front().durationMs, 2.0);
    EXPECT_EQ(metrics->samples().back().kind, Kind::modelLoad);
}

TEST_F(PerformanceMetricsTest, ASampleTellsWhenItWasMade) {
    scheduler.advance(90s);
    metrics->record(Kind::sendKeystrokes, 3.5);
    metrics->record(Kind::sendKeystrokes, 3.5);
    const auto samples = metrics->samples();
    EXPECT_EQ(samples[0].timestamp, scheduler.wallTime());
    EXPECT_NE(samples[0].id, samples[1].id);
}

TEST_F(PerformanceMetricsTest, AKindWithoutSamplesHasNoStats) {
    metrics->record(Kind::modelLoad, 10);
    const auto stats = metrics->stats(Kind::sessionScan);
    EXPECT_EQ(stats.count, 0);
    EXPECT_EQ(stats.lastMs, 0.0);
    EXPECT_EQ(stats.avgMs, 0.0);
    EXPECT_EQ(stats.minMs, std::numeric_limits<double>::max());
    EXPECT_EQ(stats.maxMs, 0.0);
}

TEST_F(PerformanceMetricsTest, StatsSummariseOneKind) {
    metrics->record(Kind::transcription, 10);
    metrics->record(Kind::modelLoad, 100000);
    metrics->record(Kind::transcription, 30);
    metrics->record(Kind::sessionScan, 0.001);
    metrics->record(Kind::transcription, 20);
    const auto stats = metrics->stats(Kind::transcription);
    EXPECT_EQ(stats.count, 3);
    EXPECT_EQ(stats.lastMs, 20.0);
    EXPECT_EQ(stats.avgMs, 20.0);
    EXPECT_EQ(stats.minMs, 10.0);
    EXPECT_EQ(stats.maxMs, 30.0);
}

TEST_F(PerformanceMetricsTest, ASingleSampleIsAllFourDurations) {
    metrics->record(Kind::transcription, 42.5);
    const auto stats = metrics->stats(Kind::transcription);
    EXPECT_EQ(stats.count, 1);
    EXPECT_EQ(stats.lastMs, 42.5);
    EXPECT_EQ(stats.avgMs, 42.5);
    EXPECT_EQ(stats.minMs, 42.5);
    EXPECT_EQ(stats.maxMs, 42.5);
}

TEST_F(PerformanceMetricsTest, ObserversLearnOfEveryChange) {
    int changes = 0;
    QObject::connect(metrics.get(), &PerformanceMetrics::samplesChanged, [&] { ++changes; });
    for (int i = 0; i < 51; ++i) {
        metrics->record(Kind::transcription, 1);
    }
    EXPECT_EQ(changes, 51);
    metrics->clear();
    EXPECT_EQ(changes, 52);
    EXPECT_TRUE(metrics->samples().isEmpty());
    metrics->clear();
    EXPECT_EQ(changes, 52);
}

TEST_F(PerformanceMetricsTest, MeasuringGivesTheResultAndRecordsTheTimeItTook) {
    std::optional<QString> result;
    const auto measured = [&]() -> Task<> {
        auto text = co_await metrics->measure(
            Kind::transcription,
            [&scheduler = scheduler, answer = u"hello"_s]() -> Task<std::optional<QString>> {
                co_await scheduler.sleep(1234567890ns);
                co_return answer; // lives in the operation, which must have been kept
            });
        result = text;
    };
    const Task<> task = measured();
    scheduler.advance(1s);
    EXPECT_FALSE(result);
    EXPECT_TRUE(metrics->samples().isEmpty());
    scheduler.advance(1s);
    EXPECT_EQ(result, u"hello"_s);
    ASSERT_EQ(metrics->samples().size(), 1);
    EXPECT_EQ(metrics->samples().front().kind, Kind::transcription);
    EXPECT_DOUBLE_EQ(metrics->samples().front().durationMs, 1234.567890);
}

TEST_F(PerformanceMetricsTest, AnOperationThatIsReadyAtOnceTakesNoTime) {
    const auto measured = [&]() -> Task<> {
        co_await metrics->measure(Kind::sendKeystrokes, []() -> Task<int> { co_return 1; });
    };
    const Task<> task = measured();
    EXPECT_EQ(metrics->stats(Kind::sendKeystrokes).count, 1);
    EXPECT_EQ(metrics->stats(Kind::sendKeystrokes).lastMs, 0.0);
}

TEST_F(PerformanceMetricsTest, TheResultArrivesAlsoWhenTheMetricsAreGone) {
    int result = 0;
    const auto measured = [&]() -> Task<> {
        result = co_await metrics->measure(Kind::modelLoad, [&]() -> Task<int> {
            co_await scheduler.sleep(1s);
            co_return 7;
        });
    };
    const Task<> task = measured();
    metrics.reset();
    scheduler.advance(1s);
    EXPECT_EQ(result, 7);
}

TEST_F(PerformanceMetricsTest, TheMarksAreInTheLogAtDebugLevel) {
    LogCapture log("com.quorvin.Performance");
    const auto measured = [&]() -> Task<> {
        co_await metrics->measure(Kind::sessionScan, [&]() -> Task<int> {
            co_await scheduler.sleep(2345678us);
            co_return 1;
        });
    };
    const Task<> task = measured();
    EXPECT_EQ(log.take(),
              (std::vector<LogCapture::Line>{{QtDebugMsg, u"pipeline begin: Session Scan"_s}}));
    scheduler.advance(3s);
    EXPECT_EQ(log.take(), (std::vector<LogCapture::Line>{
                              {QtDebugMsg, u"pipeline end: Session Scan 2345.7ms"_s}}));
}

TEST_F(PerformanceMetricsTest, SharedIsTheLivingInstance) {
    EXPECT_EQ(&PerformanceMetrics::shared(), metrics.get());
    metrics.reset();
    const PerformanceMetrics anew(scheduler);
    EXPECT_EQ(&PerformanceMetrics::shared(), &anew);
}

TEST_F(PerformanceMetricsTest, AnOlderInstanceMayGoLater) {
    const PerformanceMetrics newer(scheduler);
    metrics.reset();
    EXPECT_EQ(&PerformanceMetrics::shared(), &newer);
}
