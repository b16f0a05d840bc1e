import QtQuick
import QtQuick.Controls
import Quorvin

/// The editable draft. `text` follows the draft, and what the user types is told by `edited`.
ScrollView {
    id: editor

    required property string draft
    signal edited(string text)

    background: Rectangle {
        color: Look.bgSurface
        radius: Look.radius
        border.color: area.activeFocus ? Look.accent : Look.border
    }

    TextArea {
        id: area

        text: editor.draft
        color: Look.textPrimary
        placeholderText: qsTr("Press record and speak.")
        placeholderTextColor: Look.textSecondary
        selectionColor: Look.accent
        selectedTextColor: Look.bgBase
        wrapMode: TextArea.Wrap
        textFormat: TextArea.PlainText
        selectByMouse: true
        padding: Look.spacing
        font.pixelSize: 15
        background: null
        KeyNavigation.priority: KeyNavigation.BeforeItem
        KeyNavigation.tab: area.nextItemInFocusChain(true)
        Accessible.name: qsTr("Draft")

        onTextChanged: {
            if (text !== editor.draft) {
                editor.edited(text);
            }
        }
        Connections {
            target: editor
            function onDraftChanged() {
                if (area.text !== editor.draft) {
                    area.text = editor.draft;
                }
            }
        }
    }
}
