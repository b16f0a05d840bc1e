import QtQuick
import Quorvin

/// A pill that tells what the program does, and for how long it has.
Item {
    id: badge

    required property bool isRecording
    required property bool isTranscribing
    required property bool isReady
    /// Of the take, in seconds.
    required property double duration
    /// Of the transcription's clock, in milliseconds.
    required property double elapsed
    property bool dotVisible: true

    readonly property string label: StatusBadgeLook.label(isRecording, isTranscribing)
    /// Changes far less often than what it is made of.
    readonly property string timerText: StatusBadgeLook.timerText(isRecording, isTranscribing,
                                                                    duration, elapsed)
    readonly property bool isShown: visible && (Window.window?.visible ?? false)

    readonly property color dotColor: isRecording ? Look.recording
                                                  : isTranscribing ? "#f59e0b"
                                                  : isReady ? Look.success : Look.textMuted
    readonly property bool isBusy: isRecording || isTranscribing
    readonly property color labelColor: isBusy ? dotColor : Look.textSecondary

    implicitWidth: pill.width
    implicitHeight: pill.height
    Accessible.role: Accessible.StaticText
    Accessible.name: timerText === "" ? label : label + " " + timerText
    Accessible.description: qsTr("State")

    onIsRecordingChanged: {
        if (!isRecording) {
            dotVisible = true;
        }
    }

    Timer {
        objectName: "dotTimer"
        interval: 600
        repeat: true
        running: badge.isRecording && badge.isShown
        onTriggered: badge.dotVisible = !badge.dotVisible
    }

    Rectangle {
        id: pill

        objectName: "pill"
        anchors.verticalCenter: parent.verticalCenter
        width: 10 + content.width + 10
        height: 26
        radius: 6
        color: badge.isRecording ? Qt.alpha(badge.dotColor, 0.08)
                                 : badge.isTranscribing ? Qt.alpha(badge.dotColor, 0.06)
                                                        : Qt.rgba(1, 1, 1, 0.04)
        border.width: 1
        border.color: badge.isRecording ? Qt.alpha(badge.dotColor, 0.6)
                                        : badge.isTranscribing ? Qt.alpha(badge.dotColor, 0.4)
                                                               : Qt.rgba(1, 1, 1, 0.1)

        Row {
            id: content

            x: 10
            anchors.verticalCenter: parent.verticalCenter

            CapsuleInk {
                objectName: "dot"
                anchors.verticalCenter: parent.verticalCenter
                width: 7
                height: 7
                color: badge.dotColor
                shadowColor: Qt.alpha(badge.dotColor, 0.8)
                shadowRadius: badge.isRecording ? 4 : 2
                opacity: badge.dotVisible ? 1 : 0.2
            }
            Item {
                width: 6
                height: 1
            }
            NeonText {
                objectName: "label"
                anchors.verticalCenter: parent.verticalCenter
                text: badge.label
                font: Typeface.font(11)
                color: badge.labelColor
            }
            Item {
                objectName: "divider"
                anchors.verticalCenter: parent.verticalCenter
                width: 8 + 1 + 8
                height: 12
                visible: badge.timerText !== ""

                Rectangle {
                    x: 8
                    width: 1
                    height: parent.height
                    color: Qt.rgba(1, 1, 1, 0.15)
                }
            }
            Item {
                anchors.verticalCenter: parent.verticalCenter
                width: Math.max(timer.width, badge.isTranscribing ? Math.ceil(threeDots.advanceWidth) : 0) + 2
                height: timer.height
                visible: badge.timerText !== ""

                NeonText {
                    id: timer

                    objectName: "timer"
                    text: badge.timerText
                    font: Typeface.font(11)
                    color: badge.labelColor
                    opacity: 0.85
                }
            }
        }
    }

    // The pill doesn't breathe with the dots.
    TextMetrics {
        id: threeDots
        text: "..."
        font: Typeface.font(11)
    }
}
