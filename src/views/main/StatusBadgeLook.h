#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// What the status badge says.
class StatusBadgeLook final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// A badge that isn't busy says the same whether the program is ready or not: the dot tells.
    Q_INVOKABLE [[nodiscard]] static QString label(bool isRecording, bool isTranscribing);
    /// The length of the take, `duration` in seconds, as "05:09"; minutes go on past 59. For a
    /// transcription one to three dots by its clock, `elapsed` in milliseconds. Otherwise empty.
    Q_INVOKABLE [[nodiscard]] static QString timerText(bool isRecording, bool isTranscribing,
                                                       double duration, double elapsed);
};

} // namespace quorvin
