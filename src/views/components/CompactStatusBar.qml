import QtQuick
import Quorvin

/// The panel's lower strip: the state, what there is to say, and the commands.
Rectangle {
    id: bar

    required property bool isRecording
    required property bool isTranscribing
    required property bool micOK
    required property bool axOK
    required property bool modelOK
    required property bool hasDraft
    required property int draftWordCount
    required property string feedback

    property var onStop
    property var onCancel
    property var onSend
    property var onDeleteLast
    property var onLoadPrevious
    property var onAttach

    readonly property bool isBusy: isRecording || isTranscribing
    readonly property string missing: CompactLabels.missing(micOK, axOK, modelOK)

    color: Qt.rgba(0.09, 0.09, 0.09, 1)

    StatusDot {
        id: dot

        objectName: "statusDot"
        anchors.verticalCenter: parent.verticalCenter
        x: 16
        isRecording: bar.isRecording
        isTranscribing: bar.isTranscribing
        micOK: bar.micOK
        axOK: bar.axOK
        modelOK: bar.modelOK
    }
    WarnTriangle {
        id: warning

        objectName: "warning"
        anchors.verticalCenter: parent.verticalCenter
        anchors.left: dot.right
        anchors.leftMargin: 9
        visible: bar.missing !== ""
        Accessible.role: Accessible.Graphic
        Accessible.name: bar.missing

        HoverHandler { id: warningHover }
        CompactToolTip {
            text: bar.missing
            visible: warningHover.hovered
        }
    }
    Item {
        anchors.left: warning.visible ? warning.right : dot.right
        anchors.leftMargin: 9
        anchors.right: commands.left
        anchors.rightMargin: 6
        height: parent.height

        NeonText {
            objectName: "wordCount"
            anchors.verticalCenter: parent.verticalCenter
            text: bar.draftWordCount + "w"
            font.pixelSize: 10
            color: Qt.rgba(1, 1, 1, 0.4)
            opacity: !bar.isBusy && bar.hasDraft && bar.feedback === "" && bar.draftWordCount >= 1
                     ? 1 : 0
            visible: opacity > 0

            Behavior on opacity {
                NumberAnimation { duration: 200; easing.type: Easing.InOutQuad }
            }
        }
        Text {
            objectName: "feedback"
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
            visible: bar.feedback !== ""
            text: bar.feedback
            textFormat: Text.PlainText
            elide: Text.ElideRight
            font.pixelSize: 10
            color: Qt.rgba(1, 1, 1, 0.65)
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    Row {
        id: commands

        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter

        HintButton {
            objectName: "stopButton"
            visible: bar.isBusy
            label: "Stop"
            shortcut: "⌥Space"
            onClicked: bar.onStop()
        }
        HintButton {
            objectName: "sendButton"
            visible: !bar.isBusy && bar.hasDraft
            label: "Send"
            shortcut: "⌘→"
            onClicked: bar.onSend()
        }
        HintSeparator {
            anchors.verticalCenter: parent.verticalCenter
            visible: bar.isBusy || bar.hasDraft
        }
        HintButton {
            objectName: "cancelButton"
            label: "Cancel"
            shortcut: "Esc"
            onClicked: bar.onCancel()
        }
        HintSeparator {
            anchors.verticalCenter: parent.verticalCenter
        }
        CompactIconButton {
            objectName: "deleteLastButton"
            systemName: "delete.left"
            tint: "#f59e0b"
            toolTip: "Delete last phrase"
            onClicked: bar.onDeleteLast()
        }
        CompactIconButton {
            objectName: "loadPreviousButton"
            systemName: "arrow.uturn.up"
            tint: "#06b6d4"
            toolTip: "Previous phrase"
            onClicked: bar.onLoadPrevious()
        }
        PaperclipButton {
            objectName: "attachButton"
            onClicked: bar.onAttach()
        }
    }
}
