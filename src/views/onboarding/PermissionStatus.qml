import QtQuick
import Quorvin

/// Whether what a step waits for has been granted.
Row {
    id: status

    required property bool isGranted

    height: words.height
    spacing: 7

    Symbol {
        objectName: "grantedSymbol"
        anchors.verticalCenter: parent.verticalCenter
        visible: status.isGranted
        name: "checkmark.circle.fill"
        size: 14
        color: Look.success
    }
    Spinner {
        objectName: "waitingSpinner"
        anchors.verticalCenter: parent.verticalCenter
        visible: !status.isGranted
        implicitWidth: 14
        implicitHeight: 14
        color: Look.textSecondary
        Accessible.ignored: true
    }
    Text {
        id: words

        objectName: "statusText"
        text: status.isGranted ? qsTr("Permission granted") : qsTr("Waiting for permission...")
        font: Typeface.font(13)
        color: status.isGranted ? Look.success : Look.textSecondary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
