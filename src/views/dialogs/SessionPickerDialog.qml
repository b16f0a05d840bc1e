import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quorvin

/// Asks which of several sessions of an agent is to get the text.
Sheet {
    id: dialog

    required property QtObject appState
    /// A row and its distance to the next one.
    property real rowHeight: 60
    readonly property var sessions: appState.sessionPickerSessions
    readonly property color accent: AgentLook.accent(appState.sessionPickerTitle)

    width: 440
    padding: 0
    spacing: 0
    borderColor: Qt.alpha(accent, 0.3)
    title: heading.text

    onAboutToShow: {
        list.currentIndex = 0;
        list.positionViewAtBeginning();
        list.focus = true;
    }

    RowLayout {
        Layout.fillWidth: true
        Layout.leftMargin: 20
        Layout.rightMargin: 20
        Layout.topMargin: 18
        Layout.bottomMargin: 14

        Column {
            Layout.fillWidth: true
            spacing: 3

            Text {
                id: heading

                objectName: "pickerTitle"
                text: qsTr("Select %1 Client").arg(dialog.appState.sessionPickerTitle)
                textFormat: Text.PlainText
                font: Typeface.font(16, Font.DemiBold)
                color: Look.textPrimary
            }
            Text {
                objectName: "pickerCount"
                text: qsTr("%1 clients found · click to send").arg(dialog.sessions.length)
                font: Typeface.font(12)
                color: Look.textSecondary
            }
        }
        AbstractButton {
            id: closeButton

            objectName: "closeButton"
            implicitWidth: 28
            implicitHeight: 28
            focusPolicy: Qt.TabFocus
            hoverEnabled: true
            text: qsTr("Close")
            Accessible.name: text
            Accessible.onPressAction: clicked()
            Keys.onReturnPressed: clicked()
            Keys.onEnterPressed: clicked()
            onClicked: dialog.close()

            background: Rectangle {
                objectName: "closeGround"
                radius: 14
                color: Qt.rgba(1, 1, 1, 0.06)

                Symbol {
                    objectName: "closeSymbol"
                    anchors.centerIn: parent
                    name: "xmark"
                    size: 12
                    color: closeButton.hovered ? Look.textPrimary : Look.textSecondary
                }
                FocusRing {
                    visible: closeButton.visualFocus
                    gap: 2
                }
            }
        }
    }
    Rectangle {
        objectName: "pickerDivider"
        Layout.fillWidth: true
        implicitHeight: 1
        color: Qt.rgba(1, 1, 1, 0.06)
    }
    DialogList {
        id: list

        objectName: "sessionList"
        Layout.fillWidth: true
        Layout.leftMargin: 16
        Layout.rightMargin: 16 - scrollBarRoom
        Layout.topMargin: 12
        Layout.bottomMargin: 12
        // From the fifth on, half a row shows that there are more.
        implicitHeight: dialog.rowHeight * Math.min(count, 4.5)
        model: dialog.sessions
        Accessible.name: dialog.title
        delegate: SessionPickerRow {
            required property var modelData

            objectName: "sessionRow"
            width: ListView.view.width - ListView.view.scrollBarRoom
            session: modelData
            accentColor: dialog.accent
            initial: AgentLook.initial(dialog.appState.sessionPickerTitle)
            onClicked: {
                dialog.close();
                dialog.appState.sendToPickedSession(session);
            }
        }
    }
}
