#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QString>

namespace quorvin {

/// One dictated text of the past.
struct HistoryEntry {
    Q_GADGET
    Q_PROPERTY(qint64 id MEMBER id CONSTANT)
    Q_PROPERTY(QString text MEMBER text CONSTANT)
    Q_PROPERTY(QString language MEMBER language CONSTANT)
    Q_PROPERTY(double duration MEMBER duration CONSTANT)
    Q_PROPERTY(QDateTime createdAt MEMBER createdAt CONSTANT)
    Q_PROPERTY(QString sentTo MEMBER sentTo CONSTANT)

public:
    qint64 id = 0; ///< never used again, also when the entry is gone
    QString text;
    QString language;    ///< code of the run, such as "en"
    double duration = 0; ///< of the take, in seconds
    QDateTime createdAt; ///< UTC, whole seconds
    QString sentTo;      ///< the agent that got the text; empty when none did

    bool operator==(const HistoryEntry&) const = default;
};

} // namespace quorvin
