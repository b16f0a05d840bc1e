import QtQuick
import QtQuick.Controls
import Quorvin

/// The editable draft. Grows with the text between its two heights and scrolls from there on.
Rectangle {
    id: editor

    required property string draft
    readonly property alias characterCount: content.characterCount
    /// The user has changed it; whoever owns the draft takes the new text.
    signal edited(string text)

    implicitHeight: Math.max(80, Math.min(150, area.implicitHeight))
    radius: 8
    color: Look.bgBase

    Flickable {
        id: scroller

        objectName: "draftScroller"
        anchors.fill: parent
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: SlimScrollBar {
            objectName: "draftScrollBar"
            tint: Look.textSecondary
        }

        TextArea.flickable: TextArea {
            id: area

            objectName: "draftText"
            leftPadding: 10
            rightPadding: 12 // the scroll indicator's
            topPadding: 8
            bottomPadding: 8
            background: null
            font: Typeface.font(13)
            color: Look.textPrimary
            placeholderText: qsTr("Speak or type…")
            placeholderTextColor: Qt.alpha(Look.textSecondary, 0.6)
            selectionColor: Look.accent
            selectedTextColor: Look.bgBase
            textFormat: TextArea.PlainText
            wrapMode: TextArea.Wrap
            selectByMouse: true
            persistentSelection: true // the menu takes the focus
            Accessible.name: qsTr("Draft")
            Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(
                                       Qt.BacktabFocusReason)
            Keys.onMenuPressed: menu.popup(cursorRectangle.x, cursorRectangle.bottom)

            MonospacedDigits {
                document: area.textDocument
                font: area.font
            }
            TapHandler {
                acceptedButtons: Qt.RightButton
                onTapped: eventPoint => menu.popup(eventPoint.position)
            }
            DraftMenu {
                id: menu

                area: area
            }
        }
    }

    DraftDocument {
        id: content

        document: area.textDocument
        draft: editor.draft
        onEdited: text => editor.edited(text)
        onReplaced: area.cursorPosition = area.length
    }

    Rectangle {
        objectName: "draftFocus"
        anchors.fill: parent
        radius: parent.radius
        color: "transparent"
        border.width: 2
        border.color: Look.accent
        visible: area.activeFocus
    }
}
