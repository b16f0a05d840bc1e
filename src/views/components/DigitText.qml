import QtQuick
import Quorvin

/// A label whose digits all take the same room, so that a counting number stands still.
TextEdit {
    id: label

    readOnly: true
    activeFocusOnPress: false
    selectByMouse: false
    enabled: false // the pointer belongs to what is below
    textFormat: TextEdit.PlainText
    font: Typeface.font(13)
    Accessible.role: Accessible.StaticText
    leftPadding: digits.indent(text, font)
    Accessible.name: text

    MonospacedDigits {
        id: digits

        isIndented: true
        document: label.textDocument
        font: label.font
    }
}
