import QtQuick
import QtQuick.Controls
import Quorvin

/// The record control: a disc inside a ring that widens with the input level.
AbstractButton {
    id: button

    required property bool recording
    required property bool transcribing
    /// 0 to 1.
    required property double level

    readonly property color tint: recording ? Look.recording
                                            : transcribing ? Look.transcribing : Look.accent

    implicitWidth: 112
    implicitHeight: 112
    focusPolicy: Qt.StrongFocus
    text: recording ? qsTr("Stop") : qsTr("Record")
    Accessible.name: text
    Accessible.onPressAction: click()

    background: Item {
        Rectangle {
            anchors.centerIn: parent
            width: 76 + 36 * (button.recording ? button.level : 0)
            height: width
            radius: width / 2
            color: Qt.alpha(button.tint, 0.18)
        }
        Rectangle {
            anchors.centerIn: parent
            width: 76
            height: 76
            radius: 38
            color: button.down ? Qt.darker(button.tint, 1.25) : button.tint
            border.width: button.visualFocus ? 3 : 0
            border.color: Look.textPrimary
        }
    }
    contentItem: Item {
        Rectangle {
            anchors.centerIn: parent
            width: 26
            height: 26
            radius: button.recording ? 5 : 13
            color: Look.bgBase
        }
    }
}
