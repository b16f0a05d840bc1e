import QtQuick
import Quorvin

/// The state of the program as one pulsing dot.
NeonDot {
    id: dot

    required property bool isRecording
    required property bool isTranscribing
    required property bool micOK
    required property bool axOK
    required property bool modelOK

    readonly property int dotState: StatusDotLook.dotState(isRecording, isTranscribing, micOK, axOK,
                                                           modelOK)
    property bool pulse: false
    /// Since the pulse began, in seconds, counted in its steps.
    property real pulseTime: 0

    /// Enough for the eye, and less than the display's rate: each step is painted.
    readonly property int stepInterval: 66

    function restart() {
        pulse = false;
        pulseTime = 0;
        if (StatusDotLook.pulseDuration(dotState) > 0) {
            pulseStart.restart();
        } else {
            pulseStart.stop();
        }
    }

    implicitWidth: 7
    implicitHeight: 7
    color: StatusDotLook.color(dotState)
    glowColor: color
    glowRadius: 5
    opacity: pulse ? StatusDotLook.pulseOpacity(dotState, pulseTime) : 1

    onDotStateChanged: restart()
    Component.onCompleted: restart()

    Timer {
        id: pulseStart

        interval: 50
        onTriggered: dot.pulse = true
    }
    Timer {
        interval: dot.stepInterval
        repeat: true
        running: dot.pulse && dot.visible
        onTriggered: dot.pulseTime += dot.stepInterval / 1000
    }
}
