import QtQuick
import QtQuick.Controls
import Quorvin

/// Sends the draft to an agent: a glowing capsule that lights up under the pointer and gives way to
/// a click.
AbstractButton {
    id: chip

    enum Target { Claude, OpenCode }

    required property int target
    required property bool disabled
    readonly property bool isHovered: hovered && enabled
    property bool isPressed: false

    readonly property bool isClaude: target === SendChip.Target.Claude
    readonly property string systemName: isClaude ? "sparkles"
                                                  : "chevron.left.forwardslash.chevron.right"
    readonly property color gradientStart: isClaude ? "#b794ff" : "#5eead4"
    readonly property color gradientEnd: isClaude ? "#7c3aed" : "#059669"
    readonly property color restingTint: isClaude ? "#8b5cf6" : "#10b981"
    readonly property color glowColor: isClaude ? "#a78bfa" : "#34d399"

    /// How far it has come from resting to hovered, and from there to pressed; springs go past 1.
    readonly property double hoverAmount: hoverSpring.value
    readonly property double pressAmount: pressSpring.value
    /// How much of the look of a hovered or pressed one it has. The two looks fade over each other
    /// as finished pictures, so that nothing is drawn anew on the way.
    readonly property double light: Math.max(0, Math.min(1, Math.max(hoverAmount, pressAmount)))

    enabled: !disabled
    leftPadding: 16
    rightPadding: 16
    topPadding: 8
    bottomPadding: 8
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    text: isClaude ? "Claude" : "OpenCode"
    font: Typeface.font(13, Font.Bold)
    Accessible.name: text
    Accessible.onPressAction: {
        if (enabled) {
            clicked();
        }
    }
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    onClicked: {
        isPressed = true;
        release.restart();
    }

    Timer {
        id: release

        interval: 80
        onTriggered: chip.isPressed = false
    }
    Spring {
        id: hoverSpring

        to: chip.isHovered ? 1 : 0
        response: 0.3
        damping: 0.7
    }
    Spring {
        id: pressSpring

        to: chip.isPressed ? 1 : 0
        response: chip.isPressed ? 0.16 : 0.3
        damping: chip.isPressed ? 0.5 : 0.6
    }

    // All that moves is in here, so that the place to click stays where it is.
    background: Item {
        readonly property real radius: height / 2

        objectName: "capsule"
        scale: {
            const hovered = 1 + 0.04 * chip.hoverAmount;
            return hovered + (0.93 - hovered) * chip.pressAmount;
        }

        Item {
            objectName: "restingLook"
            anchors.fill: parent
            opacity: 1 - chip.light
            visible: opacity > 0

            CapsuleInk {
                objectName: "restingFill"
                anchors.fill: parent
                color: chip.enabled ? Qt.alpha(chip.restingTint, 0.16) : Qt.rgba(1, 1, 1, 0.04)
                shadowColor: Qt.alpha(chip.glowColor, 0.3)
                shadowRadius: chip.enabled ? 7 : 0
                shadowOffset: 2
            }
            CapsuleInk {
                objectName: "restingBorder"
                anchors.fill: parent
                lineWidth: 1.2
                color: chip.gradientStart
                endColor: chip.gradientEnd
                opacity: chip.enabled ? 0.7 : 0.2
            }
            LabelInk {
                objectName: "restingLabel"
                x: label.x
                y: label.y
                width: label.width
                height: label.height
                systemName: chip.systemName
                symbolRect: Qt.rect(symbol.x, symbol.y, symbol.width, symbol.height)
                text: chip.text
                font: chip.font
                textOrigin: Qt.point(words.x, words.y + words.baselineOffset)
                color: chip.enabled ? chip.gradientStart : Look.textMuted
                endColor: chip.enabled ? chip.gradientEnd : Look.textMuted
            }
        }
        Item {
            objectName: "litLook"
            anchors.fill: parent
            opacity: chip.light
            visible: opacity > 0

            CapsuleInk {
                objectName: "litFill"
                anchors.fill: parent
                color: chip.gradientStart
                endColor: chip.gradientEnd
                shadowColor: Qt.alpha(chip.glowColor, 0.65)
                shadowRadius: 14
                shadowOffset: 3
            }
            CapsuleInk {
                objectName: "litBorder"
                anchors.fill: parent
                lineWidth: 1.2
                color: Qt.rgba(1, 1, 1, 0.55)
            }
            Item {
                id: label

                objectName: "litLabel"
                x: chip.leftPadding
                y: chip.topPadding
                width: symbol.width + 7 + words.width
                height: words.height

                Symbol {
                    id: symbol

                    y: Math.round((parent.height - height) / 2)
                    name: chip.systemName
                    size: 12
                    color: "white"
                }
                Text {
                    id: words

                    x: symbol.width + 7
                    text: chip.text
                    font: chip.font
                    color: "white"
                }
            }
        }
        FocusRing {
            visible: chip.visualFocus
        }
    }
    contentItem: Item {
        implicitWidth: Math.ceil(label.width)
        implicitHeight: label.height
    }
}
