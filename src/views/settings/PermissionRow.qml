import QtQuick
import Quorvin

/// A permission, whether it is there, and a way to get it.
Item {
    id: row

    required property string icon
    required property string title
    required property string description
    required property int status
    property bool divided: false

    signal action

    readonly property color statusColor: PermissionStatuses.color(status)

    width: parent?.width ?? 0
    implicitHeight: 2 * 12 + Math.max(texts.height, tile.height)

    Rectangle {
        id: tile

        x: 16
        anchors.verticalCenter: parent.verticalCenter
        width: 32
        height: 32
        radius: 8
        color: Qt.rgba(1, 1, 1, 0.06)

        Symbol {
            objectName: "permissionSymbol"
            anchors.centerIn: parent
            name: row.icon
            size: 15
            color: Qt.rgba(1, 1, 1, 0.8)
        }
    }
    Column {
        id: texts

        anchors.left: tile.right
        anchors.leftMargin: 12
        anchors.right: holder.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Text {
            objectName: "permissionTitle"
            width: parent.width
            text: row.title
            font: Typeface.font(13)
            color: Qt.rgba(1, 1, 1, 0.92)
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Text {
            objectName: "permissionDescription"
            width: parent.width
            text: row.description
            wrapMode: Text.Wrap
            font: Typeface.font(11)
            color: Qt.rgba(1, 1, 1, 0.35)
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    Row {
        id: holder

        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        spacing: 12

        Row {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 6

            CapsuleInk {
                anchors.verticalCenter: parent.verticalCenter
                width: 7
                height: 7
                color: row.statusColor
            }
            Text {
                objectName: "permissionStatus"
                text: PermissionStatuses.label(row.status)
                font: Typeface.font(12, Font.Medium)
                color: row.statusColor
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                Accessible.description: row.title
            }
        }
        SettingsButton {
            objectName: "grantButton"
            anchors.verticalCenter: parent.verticalCenter
            visible: row.status !== PermissionStatuses.PermissionStatus.granted
            text: "Grant"
            accent: true
            Accessible.description: row.title
            onClicked: row.action()
        }
    }
    RowDivider {
        visible: row.divided
    }
}
