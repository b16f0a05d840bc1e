import QtQuick
import QtQuick.Controls
import Quorvin

/// What can be done in a step. Space and Return press it. Its place stays when it isn't offered any
/// more.
AbstractButton {
    id: button

    property bool isPrimary: false
    property bool isOffered: true
    readonly property color primaryGround: "#6366f1"
    readonly property color ground: {
        if (isPrimary) {
            return down ? Qt.darker(primaryGround, 1.12)
                        : hovered ? Qt.lighter(primaryGround, 1.08) : primaryGround;
        }
        return Qt.rgba(1, 1, 1, down ? 0.03 : hovered ? 0.1 : 0.06);
    }

    horizontalPadding: isPrimary ? 28 : 24
    verticalPadding: isPrimary ? 11 : 10
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    enabled: isOffered
    opacity: isOffered ? 1 : 0
    font: Typeface.font(14)
    Accessible.name: text
    Accessible.ignored: !isOffered
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    Behavior on opacity { NumberAnimation { duration: 200; easing.type: Easing.InOutQuad } }

    background: Item {
        readonly property real radius: 8

        SoftShadow {
            objectName: "buttonShadow"
            anchors.fill: parent
            visible: button.isPrimary
            color: Qt.alpha(button.primaryGround, 0.4)
            radius: 8
            cornerRadius: 8
        }
        Rectangle {
            objectName: "buttonGround"
            anchors.fill: parent
            radius: 8
            color: button.ground
            border.width: button.isPrimary ? 0 : 1
            border.color: Qt.alpha(Look.textSecondary, button.hovered ? 0.5 : 0.3)

            Behavior on color { ColorAnimation { duration: 150 } }
        }
        FocusRing {
            control: button
        }
    }
    contentItem: Text {
        objectName: "buttonText"
        text: button.text
        font: button.font
        color: button.isPrimary ? "white" : Look.textPrimary
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
