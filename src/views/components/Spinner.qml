import QtQuick
import Quorvin

/// Tells that something goes on which can't be measured: dots in a ring, lit one after the other in
/// ten steps a second.
Item {
    id: spinner

    property color color: "white"
    property int step: 0

    readonly property int dotCount: 8
    readonly property real dotSize: width / 6

    implicitWidth: 16
    implicitHeight: 16
    Accessible.role: Accessible.ProgressBar

    Timer {
        objectName: "spinnerTimer"
        interval: 100
        repeat: true
        running: spinner.visible && (spinner.Window.window?.visible ?? false)
        onTriggered: spinner.step = (spinner.step + 1) % spinner.dotCount
    }

    Repeater {
        model: spinner.dotCount

        CapsuleInk {
            required property int index
            readonly property real angle: 2 * Math.PI * index / spinner.dotCount
            readonly property real reach: (spinner.width - spinner.dotSize) / 2
            /// Steps since it was lit.
            readonly property int age: (spinner.step - index + spinner.dotCount) % spinner.dotCount

            objectName: "spinnerDot"
            x: reach * (1 + Math.sin(angle))
            y: reach * (1 - Math.cos(angle))
            width: spinner.dotSize
            height: width
            color: spinner.color
            opacity: 1 - 0.85 * age / (spinner.dotCount - 1)
        }
    }
}
