import QtQuick
import QtQuick.Controls
import Quorvin

/// Shows the draft and hides it; which of the two is for the owner of `expanded`.
AbstractButton {
    id: button

    required property bool expanded

    /// How far it has come from resting to hovered; the spring goes past 1.
    readonly property double hoverAmount: hoverSpring.value
    readonly property double tintAmount: Math.max(0, Math.min(1, hoverAmount))

    text: expanded ? qsTr("Hide Draft") : qsTr("Show Draft")
    horizontalPadding: 14
    verticalPadding: 7
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    // All of it moves, but the place to click stays where it is.
    background: RoundedFrame {
        objectName: "toggleGround"
        radius: 8
        magnification: 1 + 0.03 * button.hoverAmount
        fill: Qt.tint(Look.bgSurface, Qt.rgba(1, 1, 1, 0.08 * button.tintAmount))
        color: Qt.tint(Look.border, Qt.alpha(Look.accent, 0.3 * button.tintAmount))

        FocusRing {
            control: button
        }
    }
    contentItem: Item {
        objectName: "toggleContent"
        implicitWidth: row.implicitWidth
        implicitHeight: row.implicitHeight
        scale: 1 + 0.03 * button.hoverAmount

        Row {
            id: row

            anchors.centerIn: parent
            spacing: 5

            Symbol {
                objectName: "toggleSymbol"
                anchors.verticalCenter: parent.verticalCenter
                name: button.expanded ? "chevron.up" : "chevron.down"
                size: 10
                color: Look.textSecondary
            }
            Text {
                objectName: "toggleLabel"
                anchors.verticalCenter: parent.verticalCenter
                text: button.text
                font: Typeface.font(12)
                color: Look.textSecondary
            }
        }
    }
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    Spring {
        id: hoverSpring

        to: button.hovered ? 1 : 0
        response: 0.3
        damping: 0.7
    }
}
