import QtQuick
import Quorvin

/// A label, what it means, and on the right the control for it.
Item {
    id: row

    required property string label
    property string description
    /// By a line from the row below.
    property bool isDivided: false
    /// The control says the label to those who can't see it.
    property bool isSaidByControl: false
    default property alias control: holder.data

    readonly property int margin: 16
    readonly property int spacing: 12

    width: parent?.width ?? 0
    implicitHeight: 2 * spacing + Math.max(texts.height, holder.height)

    Column {
        id: texts

        anchors.left: parent.left
        anchors.leftMargin: row.margin
        anchors.right: holder.left
        anchors.rightMargin: row.spacing
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Text {
            objectName: "rowLabel"
            width: parent.width
            visible: text !== ""
            text: row.label
            wrapMode: Text.Wrap
            font: Typeface.font(13)
            color: Qt.rgba(1, 1, 1, 0.92)
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Accessible.ignored: row.isSaidByControl
        }
        Text {
            objectName: "rowDescription"
            width: parent.width
            visible: text !== ""
            text: row.description
            wrapMode: Text.Wrap
            font: Typeface.font(11)
            color: Qt.rgba(1, 1, 1, 0.35)
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Accessible.ignored: row.isSaidByControl
        }
    }
    Row {
        id: holder

        objectName: "rowControl"
        anchors.right: parent.right
        anchors.rightMargin: row.margin
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8
    }
    RowDivider {
        visible: row.isDivided
    }
}
