import QtQuick
import Quorvin

/// What a row tells instead of a control.
Text {
    textFormat: Text.PlainText
    font: Typeface.font(12)
    color: Qt.rgba(1, 1, 1, 0.7)
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
