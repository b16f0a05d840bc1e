import QtQuick
import QtQuick.Controls
import Quorvin

/// A switch; what it switches is for the owner of `isOn`.
AbstractButton {
    id: toggle

    required property bool isOn
    property color onColor: ReadableTint.of(Look.accent, "#161620")
    property real trackW: 42
    property real trackH: 24
    property real thumb: 19

    signal flipped(bool on)

    implicitWidth: trackW
    implicitHeight: trackH
    padding: 0
    opacity: enabled ? 1 : 0.4
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    onClicked: flipped(!isOn)
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        objectName: "track"
        radius: height / 2
        color: toggle.isOn ? toggle.onColor : Qt.rgba(1, 1, 1, toggle.hovered ? 0.2 : 0.15)

        Behavior on color { ColorAnimation { duration: 160 } }

        CapsuleInk {
            id: knob

            readonly property real gap: (toggle.trackH - toggle.thumb) / 2

            objectName: "thumb"
            x: toggle.isOn ? toggle.trackW - width - gap : gap
            y: gap
            width: toggle.thumb
            height: toggle.thumb
            color: "white"

            Behavior on x { NumberAnimation { duration: 160; easing.type: Easing.InOutQuad } }
        }
        FocusRing {
            control: toggle
            border.color: "white"
        }
    }
}
