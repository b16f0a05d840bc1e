import QtQuick
import QtQuick.Controls
import Quorvin

/// A number of some steps, and beside it the number in words.
Row {
    id: field

    /// For the owner to set anew at each `chosen`. One between two steps, or outside, stays as it
    /// is until the user moves the handle.
    required property real value
    required property real from
    required property real to
    required property real stepSize
    required property string valueText
    /// Of the place for `valueText`.
    required property real valueWidth
    /// For those who can't see it.
    required property string label
    property string description

    signal chosen(real value)

    function stepped(number: real): real {
        const limited = Math.max(from, Math.min(to, number));
        const steps = Math.round((limited - from) / stepSize);
        return Number((from + steps * stepSize).toFixed(6)); // without the dust of the fractions
    }

    property bool isComplete: false

    spacing: 8
    Component.onCompleted: isComplete = true

    Slider {
        id: slider

        objectName: "slider"
        anchors.verticalCenter: parent.verticalCenter
        width: 100
        height: 20
        padding: 0
        from: field.from
        to: field.to
        stepSize: field.stepSize
        snapMode: Slider.SnapAlways
        value: field.value
        focusPolicy: Qt.StrongFocus
        hoverEnabled: true
        Accessible.name: field.label
        Accessible.description: field.description
        Keys.onPressed: event => {
            if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
                event.accepted = true;
                field.chosen(event.key === Qt.Key_Home ? field.from : field.to);
            }
        }
        // Assistants set the value itself.
        onValueChanged: {
            const number = field.stepped(value);
            if (field.isComplete && number !== field.stepped(field.value)) {
                field.chosen(number);
            }
        }

        background: Rectangle {
            objectName: "groove"
            anchors.verticalCenter: parent.verticalCenter
            width: slider.width
            height: 4
            radius: 2
            color: Qt.rgba(1, 1, 1, 0.12)

            Rectangle {
                width: slider.handle.x + slider.handle.width / 2
                height: parent.height
                radius: 2
                color: ReadableTint.of(Look.accent, "#161620")
            }
        }
        handle: Rectangle {
            objectName: "handle"
            x: slider.visualPosition * (slider.width - width)
            anchors.verticalCenter: parent.verticalCenter
            width: 16
            height: 16
            radius: 8
            color: slider.pressed ? "#dcdce4" : "white"

            FocusRing {
                visible: slider.visualFocus
            }
        }
    }
    DigitText {
        objectName: "sliderValue"
        anchors.verticalCenter: parent.verticalCenter
        width: field.valueWidth
        text: field.valueText
        font: Typeface.font(12)
        color: Qt.rgba(1, 1, 1, 0.7)
        horizontalAlignment: TextEdit.AlignRight
    }
}
