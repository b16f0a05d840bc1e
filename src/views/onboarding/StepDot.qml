import QtQuick
import Quorvin

/// A step of the wizard: ticked off, under way or to come.
Item {
    id: dot

    required property bool isPast
    required property bool isCurrent
    required property bool isAnimated

    implicitWidth: 24
    implicitHeight: 24

    CapsuleInk {
        objectName: "dotRing"
        anchors.fill: parent
        visible: !dot.isPast && !dot.isCurrent
        color: Look.border
        lineWidth: 1.5
    }
    Item {
        objectName: "currentDot"
        anchors.fill: parent
        opacity: dot.isCurrent ? 1 : 0
        visible: opacity > 0

        Behavior on opacity {
            enabled: dot.isAnimated

            StepFade {}
        }

        CapsuleInk {
            objectName: "currentFill"
            anchors.fill: parent
            color: Qt.alpha(Look.accent, 0.2)
            shadowColor: Qt.alpha(Look.accent, 0.4)
            shadowRadius: 6
        }
        CapsuleInk {
            objectName: "currentRing"
            anchors.fill: parent
            color: Look.accent
            lineWidth: 1.5
        }
    }
    Item {
        objectName: "pastDot"
        anchors.fill: parent
        opacity: dot.isPast ? 1 : 0
        visible: opacity > 0

        Behavior on opacity {
            enabled: dot.isAnimated

            StepFade {}
        }

        CapsuleInk {
            objectName: "pastFill"
            anchors.fill: parent
            color: Look.accent
            shadowColor: Qt.alpha(Look.accent, 0.5)
            shadowRadius: 6
        }
        Symbol {
            objectName: "pastSymbol"
            anchors.centerIn: parent
            name: "checkmark"
            size: 11
            color: "white"
        }
    }

    component StepFade: NumberAnimation {
        duration: 200
        easing.type: Easing.InOutQuad
    }
}
