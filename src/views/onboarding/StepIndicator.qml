import QtQuick
import Quorvin

/// How far the wizard has come: a dot for each permission, and a count.
Item {
    id: indicator

    /// 0 to 2 for the permissions, 3 at the end.
    required property int step
    required property bool isAnimated
    readonly property int dotCount: 3

    implicitHeight: dots.height

    Row {
        id: dots

        spacing: 12

        Repeater {
            model: indicator.dotCount

            StepDot {
                required property int index

                objectName: "stepDot"
                isPast: index < indicator.step
                isCurrent: index === indicator.step
                isAnimated: indicator.isAnimated
            }
        }
    }
    Text {
        objectName: "stepCount"
        anchors.right: parent.right
        anchors.verticalCenter: dots.verticalCenter
        text: indicator.step < indicator.dotCount
            ? "%1/%2".arg(indicator.step + 1).arg(indicator.dotCount) : ""
        font: Typeface.font(13, Font.Medium)
        color: Look.textSecondary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        Accessible.ignored: text === ""
    }
}
