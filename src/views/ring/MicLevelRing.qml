import QtQuick
import QtQuick.Controls
import Quorvin

/// The ring in the middle of the window: one big record button that shows what it has begun.
AbstractButton {
    id: ring

    /// 0 to 1.
    required property real level
    required property bool isRecording
    required property bool isTranscribing
    required property bool isEnabled
    required property string animationStyle

    /// Changes nothing in the drawing, on purpose.
    readonly property bool isHovered: hovered

    implicitWidth: 300
    implicitHeight: 300
    padding: 0
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    text: isRecording ? qsTr("Stop") : qsTr("Record")
    Accessible.name: text
    Accessible.onPressAction: clicked()

    function pressByKey(event: var) {
        // Held down it would start and stop again and again.
        if (!event.isAutoRepeat) {
            clicked();
        }
    }

    Keys.onReturnPressed: event => pressByKey(event)
    Keys.onEnterPressed: event => pressByKey(event)

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
    Timer {
        id: frameTimer

        objectName: "frameTimer"
        repeat: true
        onTriggered: canvas.tick()
    }

    background: FocusRing {
        control: ring
        gap: 0
        radius: width / 2
    }
    contentItem: MicLevelRingCanvas {
        id: canvas

        objectName: "ringCanvas"
        level: ring.level
        isRecording: ring.isRecording
        isTranscribing: ring.isTranscribing
        isEnabled: ring.isEnabled
        animationStyle: ring.animationStyle
        isShown: ring.visible && ring.Window.window !== null
                 && ring.Window.visibility !== Window.Hidden
                 && ring.Window.visibility !== Window.Minimized
        onTimerScheduled: interval => {
            frameTimer.interval = interval;
            frameTimer.restart();
        }
        onTimerDropped: frameTimer.stop()
    }
}
