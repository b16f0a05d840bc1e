#pragma once

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// What the status dot says, and how.
class StatusDotLook final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    enum class DotState { recording, transcribing, ready, noPermission, noModel };
    Q_ENUM(DotState)

    Q_INVOKABLE [[nodiscard]] static DotState dotState(bool isRecording, bool isTranscribing,
                                                       bool micOK, bool axOK, bool modelOK);
    Q_INVOKABLE [[nodiscard]] static QColor color(DotState state);
    /// Seconds from one end of the pulse to the other; 0 for a steady dot.
    Q_INVOKABLE [[nodiscard]] static double pulseDuration(DotState state);
    /// At `time` seconds since the pulse began with an opacity of 1.
    Q_INVOKABLE [[nodiscard]] static double pulseOpacity(DotState state, double time);
};

} // namespace quorvin
