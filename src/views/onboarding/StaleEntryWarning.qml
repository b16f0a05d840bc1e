import QtQuick
import Quorvin

/// Tells what may be in the way of a grant, and offers to go on all the same.
Column {
    id: warning

    signal continued()

    spacing: 12

    Rectangle {
        objectName: "warningBox"
        width: parent.width
        height: words.height + 2 * 10
        radius: 8
        color: Qt.alpha("#f59e0b", 0.08)
        border.width: 1
        border.color: Qt.alpha("#f59e0b", 0.25)

        Text {
            id: words

            objectName: "warningText"
            x: 14
            y: 10
            width: parent.width - 2 * x
            text: qsTr("**Toggle not working?** Remove Quorvin using the **−** button below the list, then re-add it with **+** to refresh the permission.")
            textFormat: Text.MarkdownText
            wrapMode: Text.Wrap
            font: Typeface.font(13)
            lineHeight: 1.2
            color: Look.textPrimary
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text.replace(/\*/g, "")
        }
    }
    LinkButton {
        objectName: "continueButton"
        anchors.horizontalCenter: parent.horizontalCenter
        text: qsTr("I've granted it — Continue")
        tint: "#6366f1"
        font: Typeface.font(13, Font.Medium)
        onClicked: warning.continued()
    }
}
