import QtQuick
import QtQuick.Layouts
import Quorvin

/// The dictated texts of the past, newest first. It looks the same in all themes, on purpose.
Sheet {
    id: dialog

    required property QtObject appState
    readonly property var entries: appState.historyEntries
    readonly property color tint: "#f97316"

    width: 500
    cornerRadius: 16
    fill: Qt.alpha("#1e1e1e", 0.95)
    bottomFill: Qt.alpha("#141414", 0.98)
    borderColor: Qt.alpha(tint, 0.3)
    shadowColor: Qt.rgba(0, 0, 0, 0.6)
    shadowRadius: 32
    shadowOffset: 0
    glowColor: Qt.alpha(tint, 0.3)
    glowRadius: 20
    title: heading.text

    onAboutToShow: {
        appState.loadHistory();
        list.currentIndex = 0;
        list.positionViewAtBeginning();
        (list.count > 0 ? list : closeButton).focus = true;
    }

    Text {
        id: heading

        objectName: "historyTitle"
        text: qsTr("Transcription History (%1)").arg(dialog.entries.length)
        font: Typeface.font(16, Font.DemiBold)
        color: dialog.tint
    }
    DigitText {
        objectName: "historyHint"
        text: qsTr("Click to load into draft")
        font: Typeface.font(11)
        color: Qt.rgba(1, 1, 1, 0.5)
    }
    Rectangle {
        objectName: "historyDivider"
        Layout.fillWidth: true
        implicitHeight: 1
        color: Qt.alpha(dialog.tint, 0.3)
    }
    Item {
        objectName: "emptyHistory"
        Layout.fillWidth: true
        implicitHeight: 350
        visible: dialog.entries.length === 0

        Text {
            anchors.centerIn: parent
            text: qsTr("No transcription history yet")
            font: Typeface.font(14)
            color: Qt.rgba(1, 1, 1, 0.5)
        }
    }
    DialogList {
        id: list

        objectName: "historyList"
        Layout.fillWidth: true
        Layout.rightMargin: -scrollBarRoom
        implicitHeight: Math.min(350, contentHeight + bottomMargin)
        bottomMargin: 40
        visible: dialog.entries.length > 0
        scrollBarTint: "white"
        model: dialog.entries
        Accessible.name: dialog.title
        delegate: HistoryRow {
            required property var modelData

            objectName: "historyRow"
            width: ListView.view.width - ListView.view.scrollBarRoom
            appState: dialog.appState
            entry: modelData
        }
    }
    RowLayout {
        Layout.fillWidth: true

        DialogButton {
            objectName: "clearAllButton"
            text: qsTr("Clear All")
            tint: "#ef4444"
            ringColor: dialog.tint
            onClicked: dialog.appState.clearHistory()
        }
        Item { Layout.fillWidth: true }
        DialogButton {
            id: closeButton

            objectName: "closeButton"
            text: qsTr("Close")
            tint: "white"
            ringColor: dialog.tint
            onClicked: dialog.close()
        }
    }
}
