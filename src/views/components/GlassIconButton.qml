import QtQuick
import QtQuick.Controls
import Quorvin

/// A symbol on a small pane of glass, which lights up under the pointer and gives way to a click.
/// What it does is said by `text`, for those who can't see it, and done by `onClicked`.
AbstractButton {
    id: button

    required property string systemName
    readonly property bool isHovered: hovered
    property bool isPressed: false

    /// How far it has come from resting to hovered, and from there to pressed; springs go past 1.
    readonly property double hoverAmount: hoverSpring.value
    readonly property double pressAmount: pressSpring.value

    function mix(from: real, to: real, amount: real): real {
        return from + (to - from) * amount;
    }
    function tinted(from: color, to: color): color {
        const amount = Math.max(0, Math.min(1, Math.max(hoverAmount, pressAmount)));
        return Qt.rgba(mix(from.r, to.r, amount), mix(from.g, to.g, amount),
                       mix(from.b, to.b, amount), mix(from.a, to.a, amount));
    }

    implicitWidth: 32
    implicitHeight: 28
    padding: 0
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.name: text

    onClicked: {
        isPressed = true;
        release.restart();
    }

    Timer {
        id: release

        interval: 100
        onTriggered: button.isPressed = false
    }
    Spring {
        id: hoverSpring

        to: button.isHovered ? 1 : 0
        response: 0.3
        damping: 0.7
    }
    Spring {
        id: pressSpring

        to: button.isPressed ? 1 : 0
        response: button.isPressed ? 0.2 : 0.3
        damping: button.isPressed ? 0.5 : 0.6
    }

    // All that moves is in here, so that the place to click stays where it is.
    background: Rectangle {
        objectName: "glass"
        radius: 7
        color: button.tinted(Qt.rgba(1, 1, 1, 0.06), Qt.alpha(Look.accent, 0.15))
        border.width: 1
        border.color: button.tinted(Qt.rgba(1, 1, 1, 0.1), Qt.alpha(Look.accent, 0.5))
        scale: button.mix(button.mix(1, 1.08, button.hoverAmount), 0.88, button.pressAmount)
        transform: Translate {
            y: -button.mix(button.hoverAmount, 1, button.pressAmount)
        }

        Symbol {
            objectName: "symbol"
            anchors.centerIn: parent
            name: button.systemName
            size: 14
            color: button.tinted(Look.textSecondary, Look.accent)
        }
        Rectangle {
            anchors.fill: parent
            anchors.margins: -3
            radius: parent.radius + 3
            color: "transparent"
            border.width: 2
            border.color: Look.accent
            visible: button.visualFocus
        }
    }
}
