import QtQuick
import QtQuick.Layouts
import Quorvin

/// Asks which of several sessions of an agent the draft is for.
Sheet {
    id: picker

    required property string agentName
    required property var sessions
    signal picked(var session)

    Text {
        text: qsTr("Send to which %1 session?").arg(picker.agentName)
        color: Look.textPrimary
        font.pixelSize: 15
    }
    Repeater {
        model: picker.sessions.length

        ActionButton {
            required property int index
            readonly property var session: picker.sessions[index]

            Layout.fillWidth: true
            Layout.minimumWidth: 280
            Layout.maximumWidth: picker.parent.width - 80
            text: session.title + "   " + session.terminal
            onClicked: picker.picked(session)
        }
    }
}
