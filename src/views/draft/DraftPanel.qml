import QtQuick
import QtQuick.Layouts
import Quorvin

/// The draft with its images, and what can be done with it. Files of images can be dropped on all
/// of it.
Item {
    id: panel

    required property QtObject appState

    readonly property bool isDropTargeted: dropArea.isTargeted
    readonly property color dropHighlight: "#f97316"
    readonly property color actionColor: ReadableTint.of(Look.accent, Look.bgSurface)

    implicitWidth: 540
    implicitHeight: column.implicitHeight

    RoundedFrame {
        objectName: "draftGround"
        anchors.fill: parent
        radius: 12
        fill: panel.isDropTargeted ? Qt.alpha(panel.dropHighlight, 0.08) : Look.bgSurface
        lineWidth: panel.isDropTargeted ? 2.5 : 1
        dash: panel.isDropTargeted ? 8 : 0
        gap: 5
        color: panel.isDropTargeted ? panel.dropHighlight : Look.border
    }
    ImageDropArea {
        id: dropArea

        anchors.fill: parent
        onDropped: image => panel.appState.attachImages([image])
    }
    ImagePicker {
        id: imagePicker

        onPicked: images => panel.appState.attachImages(images)
    }

    ColumnLayout {
        id: column

        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.leftMargin: 12
            Layout.rightMargin: 12
            Layout.topMargin: 10
            Layout.bottomMargin: 10
            spacing: 8

            Text {
                objectName: "draftTitle"
                text: qsTr("Draft")
                font: Typeface.font(13)
                color: Look.textPrimary
            }
            Text {
                objectName: "draftCharsCounter"
                text: editor.characterCount + " chars"
                font: Typeface.font(11)
                color: Look.textSecondary
            }
            Item {
                Layout.fillWidth: true
            }
            DraftActionButton {
                objectName: "historyButton"
                label: qsTr("History")
                icon.name: "clock.arrow.circlepath"
                color: panel.actionColor
                onClicked: {
                    panel.appState.loadHistory();
                    panel.appState.showHistory = true;
                }
            }
        }

        DraftEditor {
            id: editor

            objectName: "draftEditor"
            Layout.fillWidth: true
            Layout.leftMargin: 12
            Layout.rightMargin: 12
            draft: panel.appState.draftText
            onEdited: text => panel.appState.draftText = text
        }

        ImagePreviewBar {
            objectName: "imagePreviewBar"
            Layout.fillWidth: true
            Layout.leftMargin: 12
            Layout.rightMargin: 12
            Layout.topMargin: 10
            appState: panel.appState
            onPick: imagePicker.open()
        }

        RowLayout {
            Layout.leftMargin: 12
            Layout.rightMargin: 12
            Layout.topMargin: 10
            Layout.bottomMargin: 10
            spacing: 8

            DraftActionButton {
                objectName: "attachButton"
                label: qsTr("Attach")
                icon.name: "paperclip"
                color: panel.actionColor
                onClicked: imagePicker.open()
            }
            DraftActionButton {
                objectName: "selectionButton"
                label: qsTr("Selection")
                icon.name: "text.viewfinder"
                color: panel.actionColor
                onClicked: panel.appState.pickUpSelection()
            }
            DraftActionButton {
                objectName: "copyButton"
                label: qsTr("Copy")
                icon.name: "doc.on.doc"
                color: panel.actionColor
                onClicked: panel.appState.copyToPasteboard(panel.appState.draftText)
            }
            DraftActionButton {
                objectName: "clearButton"
                label: qsTr("Clear")
                icon.name: "trash"
                color: ReadableTint.of(ThemeManager.current.error,
                                       ThemeManager.current.bgSurface)
                onClicked: panel.appState.clearDraft()
            }
        }
    }
}
