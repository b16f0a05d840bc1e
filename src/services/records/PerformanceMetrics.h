#pragma once

#include "platform/Scheduler.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QProperty>
#include <QUuid>

#include <array>
#include <limits>
#include <type_traits>

namespace quorvin {

/// How long the latest steps of the pipeline took. Memory only. Main thread only.
class PerformanceMetrics : public QObject {
    Q_OBJECT

public:
    enum class Kind { transcription, sendKeystrokes, sessionScan, modelLoad };
    Q_ENUM(Kind)
    static constexpr std::array allKinds{Kind::transcription, Kind::sendKeystrokes,
                                         Kind::sessionScan, Kind::modelLoad};
    /// What the kind is called on the screen and in the log.
    [[nodiscard]] static QString rawValue(Kind kind);

    struct Sample {
        QUuid id = QUuid::createUuid();
        Kind kind = Kind::transcription;
        double durationMs = 0;
        QDateTime timestamp; ///< of the end of the step, UTC

        bool operator==(const Sample&) const = default;
    };

    /// Durations in milliseconds. They mean nothing while `count` is 0; `minMs` is then, on
    /// purpose, the largest double there is.
    struct Stats {
        int count = 0;
        double lastMs = 0;
        double avgMs = 0;
        double minMs = std::numeric_limits<double>::max();
        double maxMs = 0;
    };

    static constexpr int maxSamples = 50;

    explicit PerformanceMetrics(const Scheduler& scheduler, QObject* parent = nullptr);
    ~PerformanceMetrics() override;

    /// The living instance. Whoever composes the program makes one before anything asks for it.
    [[nodiscard]] static PerformanceMetrics& shared();

    Q_PROPERTY(
        QList<quorvin::PerformanceMetrics::Sample> samples READ samples NOTIFY samplesChanged)
    /// Oldest first; all kinds share the room for `maxSamples`.
    [[nodiscard]] QList<Sample> samples() const { return m_samples; }

    /// Runs `operation`, which returns a Task of some value, records how long it took, and returns
    /// its result.
    template <typename Operation>
    [[nodiscard]] std::invoke_result_t<Operation&> measure(Kind kind, Operation operation) {
        const QPointer self(this);
        const Scheduler::Duration start = beginInterval(kind);
        auto result = co_await operation();
        if (self) {
            endInterval(kind, start);
        }
        co_return result;
    }

    void record(Kind kind, double durationMs);
    [[nodiscard]] Stats stats(Kind kind) const;
    /// Forgets all samples.
    Q_INVOKABLE void clear();

Q_SIGNALS:
    void samplesChanged();

private:
    [[nodiscard]] Scheduler::Duration beginInterval(Kind kind) const;
    void endInterval(Kind kind, Scheduler::Duration start);

    static inline PerformanceMetrics* s_shared = nullptr;

    const Scheduler& m_scheduler;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(PerformanceMetrics, QList<Sample>, m_samples,
                                         QList<Sample>(), &PerformanceMetrics::samplesChanged)
};

} // namespace quorvin
