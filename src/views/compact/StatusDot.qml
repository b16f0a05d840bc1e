import QtQuick
import Quorvin

/// The state of the program as one pulsing dot. It steps with the panel's clock, so that it has no
/// frame painted of its own: 10 steps a second at rest, when nothing else moves much, either.
NeonDot {
    id: dot

    /// The clock, in milliseconds.
    required property real elapsed
    required property bool isRecording
    required property bool isTranscribing
    required property bool micOK
    required property bool axOK
    required property bool modelOK

    readonly property int dotState: StatusDotLook.dotState(isRecording, isTranscribing, micOK, axOK,
                                                           modelOK)
    property bool pulse: false
    /// Milliseconds of the clock at the pulse's beginning.
    property real pulseStart: 0

    function restart() {
        pulse = false;
        delay.running = false;
        delay.running = StatusDotLook.pulseDuration(dotState) > 0;
    }

    implicitWidth: 7
    implicitHeight: 7
    color: StatusDotLook.color(dotState)
    glowColor: StatusDotLook.color(dotState)
    glowRadius: 5
    opacity: pulse ? StatusDotLook.pulseOpacity(dotState, (elapsed - pulseStart) / 1000) : 1

    onDotStateChanged: restart()
    Component.onCompleted: restart()

    Timer {
        id: delay

        interval: 50
        onTriggered: {
            dot.pulseStart = dot.elapsed;
            dot.pulse = true;
        }
    }
}
