#pragma once

#include <QList>
#include <QMetaType>
#include <QString>

namespace quorvin {

/// One figure about a kind of step, as it is shown.
struct LatencyFigure {
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QString text MEMBER text CONSTANT)
    Q_PROPERTY(QString colorHex MEMBER colorHex CONSTANT)

public:
    QString name;     ///< "last", "avg", "min" or "max"
    QString text;     ///< in milliseconds: "812 ms"
    QString colorHex; ///< six digits: good, slow or bad

    bool operator==(const LatencyFigure&) const = default;
};

/// How long the latest steps of one kind took, as it is shown.
struct LatencySummary {
    Q_GADGET
    Q_PROPERTY(QString label MEMBER label CONSTANT)
    Q_PROPERTY(int count MEMBER count CONSTANT)
    Q_PROPERTY(QList<quorvin::LatencyFigure> figures MEMBER figures CONSTANT)

public:
    QString label;
    int count = 0;                ///< of the samples
    QList<LatencyFigure> figures; ///< none without samples

    bool operator==(const LatencySummary&) const = default;
};

class PerformanceMetrics;

/// One row for each kind, in their order.
[[nodiscard]] QList<LatencySummary> summarize(const PerformanceMetrics& metrics);

/// The colour, in six hexadecimal digits, of a step of the kind with this name that took `ms`
/// milliseconds. Transcriptions may take longer than the rest.
[[nodiscard]] QString latencyColor(const QString& kind, double ms);

} // namespace quorvin
