import QtQuick
import Quorvin

/// The panel's lower strip: the state, what there is to say, and the commands. Its ground, white at
/// 0.09, is the panel's own.
Item {
    id: bar

    /// Of the panel's clock, in milliseconds.
    required property real elapsed
    required property bool isRecording
    required property bool isTranscribing
    required property bool micOK
    required property bool axOK
    required property bool modelOK
    required property bool hasDraft
    required property int draftWordCount
    required property string feedback

    readonly property bool isBusy: isRecording || isTranscribing
    /// Of all texts, from the top: capitals stand in the middle.
    readonly property int textBaseline: 16

    signal stop
    signal cancel
    signal send
    signal deleteLast
    signal loadPrevious
    signal attach

    onDraftWordCountChanged: {
        if (draftWordCount >= 1) {
            wordCount.count = draftWordCount;
        }
    }

    StatusDot {
        id: dot

        objectName: "statusDot"
        anchors.verticalCenter: parent.verticalCenter
        x: 14
        elapsed: bar.elapsed
        isRecording: bar.isRecording
        isTranscribing: bar.isTranscribing
        micOK: bar.micOK
        axOK: bar.axOK
        modelOK: bar.modelOK
    }

    WarnTriangle {
        id: warning

        readonly property string text: CompactLabels.missing(bar.micOK, bar.axOK, bar.modelOK)

        objectName: "warnTriangle"
        anchors.verticalCenter: parent.verticalCenter
        x: 30
        visible: text !== ""
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text

        HoverHandler {
            id: warningHover
            margin: 3
        }
        CompactToolTip {
            y: -height - 9
            text: warning.text
            visible: warningHover.hovered
        }
    }

    Item {
        id: textArea

        objectName: "textArea"
        anchors.left: parent.left
        anchors.leftMargin: warning.visible ? 48 : 30
        anchors.right: hints.left
        anchors.rightMargin: 4
        height: parent.height

        NeonText {
            id: wordCount

            readonly property bool isShown: bar.hasDraft && bar.draftWordCount >= 1 && !bar.isBusy
                                            && bar.feedback === ""
            /// Stays while it fades away.
            property int count: 0

            objectName: "wordCount"
            y: bar.textBaseline - baselineOffset
            visible: bar.feedback === "" && opacity > 0
            opacity: isShown ? 1 : 0
            text: count + "w"
            font: Typeface.font(10)
            color: Qt.rgba(1, 1, 1, 0.4)
            Accessible.role: Accessible.StaticText
            Accessible.name: qsTr("%n word(s) in the draft", "", count)

            Behavior on opacity { NumberAnimation { duration: 200; easing.type: Easing.InOutQuad } }
        }

        Text {
            id: feedbackText

            objectName: "feedback"
            y: bar.textBaseline - baselineOffset
            width: parent.width
            text: bar.feedback
            textFormat: Text.PlainText
            elide: Text.ElideRight
            font: Typeface.font(10)
            color: Qt.rgba(1, 1, 1, 0.65)
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        HoverHandler { id: textHover }
        CompactToolTip {
            text: bar.feedback
            visible: textHover.hovered && feedbackText.truncated
        }
    }

    Row {
        id: hints

        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter

        HintButton {
            objectName: "primaryHint"
            visible: bar.isBusy || bar.hasDraft
            label: bar.isBusy ? qsTr("Stop") : qsTr("Send")
            shortcut: bar.isBusy ? "⌥Space" : "⌘→"
            onClicked: bar.isBusy ? bar.stop() : bar.send()
        }
        HintSeparator {
            anchors.verticalCenter: parent.verticalCenter
            visible: bar.isBusy || bar.hasDraft
        }
        HintButton {
            objectName: "cancelButton"
            label: qsTr("Cancel")
            shortcut: "Esc"
            onClicked: bar.cancel()
        }
        HintSeparator {
            anchors.verticalCenter: parent.verticalCenter
        }
        CompactIconButton {
            objectName: "deleteLastButton"
            systemName: "delete.left"
            tint: "#f59e0b"
            tooltip: qsTr("Delete last phrase")
            onClicked: bar.deleteLast()
        }
        CompactIconButton {
            objectName: "loadPreviousButton"
            systemName: "arrow.uturn.up"
            tint: "#06b6d4"
            tooltip: qsTr("Previous phrase")
            onClicked: bar.loadPrevious()
        }
        PaperclipButton {
            objectName: "attachButton"
            onClicked: bar.attach()
        }
    }
}
