import QtQuick
import QtQuick.Controls
import Quorvin

/// A session of an agent, to be picked.
ItemDelegate {
    id: row

    /// An AgentSessionInfo.
    required property var session
    required property color accentColor
    required property string initial

    text: session.title
    horizontalPadding: 14
    verticalPadding: 9
    spacing: 12
    implicitHeight: topPadding + implicitContentHeight + bottomPadding
    hoverEnabled: true
    // The keyboard goes to one row; it leaves the others to the arrow keys.
    focusPolicy: ListView.isCurrentItem || activeFocus ? Qt.TabFocus : Qt.NoFocus
    Accessible.name: text
    Accessible.description: detail.text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        objectName: "rowGround"
        radius: 9
        color: row.hovered ? Qt.alpha(row.accentColor, 0.15) : Qt.rgba(1, 1, 1, 0.04)
        border.color: row.hovered ? Qt.alpha(row.accentColor, 0.4) : Qt.rgba(1, 1, 1, 0.08)

        Behavior on color { ColorAnimation { duration: 120; easing.type: Easing.OutQuad } }
        Behavior on border.color { ColorAnimation { duration: 120; easing.type: Easing.OutQuad } }

        FocusRing {
            visible: row.visualFocus
            gap: 0 // the list cuts off what is outside
        }
    }
    contentItem: Item {
        implicitHeight: 36

        Rectangle {
            id: tile

            objectName: "initialTile"
            anchors.verticalCenter: parent.verticalCenter
            width: 36
            height: 36
            radius: 9
            color: Qt.alpha(row.accentColor, 0.2)

            Text {
                objectName: "initial"
                anchors.centerIn: parent
                text: row.initial
                font: Typeface.font(15, Font.DemiBold)
                color: Qt.alpha(row.accentColor, 0.9)
            }
        }
        Column {
            anchors.left: tile.right
            anchors.leftMargin: row.spacing
            anchors.right: arrow.left
            anchors.rightMargin: row.spacing
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2

            Text {
                objectName: "sessionTitle"
                width: parent.width
                text: row.text
                textFormat: Text.PlainText
                font: Typeface.font(14, Font.Medium)
                color: Look.textPrimary
                elide: Text.ElideRight
                maximumLineCount: 1
                horizontalAlignment: Text.AlignLeft
            }
            DigitText {
                id: detail

                objectName: "sessionDetail"
                text: AgentLook.sessionDetail(row.session)
                font: Typeface.font(11)
                color: Look.textSecondary
                Accessible.ignored: true // the row says it
            }
        }
        Symbol {
            id: arrow

            objectName: "arrow"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            name: "arrow.right"
            size: 13
            color: row.accentColor
            opacity: row.hovered ? 1 : 0.5
            transform: Translate {
                x: row.hovered ? 2 : 0

                Behavior on x { NumberAnimation { duration: 120; easing.type: Easing.OutQuad } }
            }

            Behavior on opacity { NumberAnimation { duration: 120; easing.type: Easing.OutQuad } }
        }
    }
}
