import QtQuick
import QtQuick.Controls
import Quorvin

/// Stands where the images will be, and asks for them.
AbstractButton {
    id: zone

    readonly property bool emptyHovered: hovered
    readonly property color highlight: "#f97316"
    readonly property color foreground: emptyHovered ? highlight : Look.textSecondary

    implicitHeight: 44
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    text: qsTr("Drop images here or click Attach")
    background: RoundedFrame {
        objectName: "dropZoneGround"
        radius: 8
        fill: zone.emptyHovered ? Qt.alpha(zone.highlight, 0.08) : "transparent"
        lineWidth: 1.5
        dash: 6
        gap: 4
        color: zone.emptyHovered ? zone.highlight : Look.border

        FocusRing {
            control: zone
        }
    }
    contentItem: Item {
        Row {
            anchors.centerIn: parent
            spacing: 6

            Symbol {
                objectName: "dropZoneSymbol"
                anchors.verticalCenter: parent.verticalCenter
                name: "plus.circle"
                size: 13
                color: zone.foreground
            }
            Text {
                objectName: "imageDropZoneHint"
                anchors.verticalCenter: parent.verticalCenter
                text: zone.text
                font: Typeface.font(12)
                color: zone.foreground
            }
        }
    }
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
}
