import QtQuick
import QtQuick.Controls
import Quorvin

/// One of several entries. A value that none of them has shows nothing.
ComboBox {
    id: picker

    /// Of SettingsChoice.
    required property var choices
    /// For the owner to set anew at each `chosen`.
    required property string value
    /// For those who can't see it.
    required property string label

    signal chosen(string value)

    /// The list resets the selection whenever the entries change.
    function select() {
        currentIndex = choices.findIndex(choice => choice.value === value);
    }

    implicitHeight: 26
    leftPadding: 10
    rightPadding: 26
    textRole: "text"
    valueRole: "value"
    model: choices
    hoverEnabled: true
    font: Typeface.font(12)
    Accessible.name: label
    onActivated: index => {
        const wanted = choices[index].value;
        select(); // in case the owner doesn't take it
        chosen(wanted);
    }
    onValueChanged: select()
    onModelChanged: select()
    Component.onCompleted: select()
    Keys.onReturnPressed: popup.open()
    Keys.onEnterPressed: popup.open()

    background: Rectangle {
        objectName: "pickerGround"
        radius: 6
        color: picker.hovered || picker.down ? picker.palette.midlight : picker.palette.button
        border.color: Qt.alpha(picker.palette.buttonText, 0.12)

        FocusRing {
            visible: picker.visualFocus
        }
    }
    contentItem: Text {
        objectName: "pickerText"
        text: picker.displayText
        textFormat: Text.PlainText
        font: picker.font
        color: picker.palette.buttonText
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }
    indicator: Symbol {
        x: picker.width - width - 6
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron.down"
        size: 9
        color: Qt.alpha(picker.palette.buttonText, 0.6)
    }
    delegate: AbstractButton {
        id: entry

        required property var modelData
        required property int index

        readonly property bool isHighlighted: picker.highlightedIndex === index

        objectName: "pickerEntry"
        width: ListView.view.width
        height: 26
        text: modelData.text
        font: picker.font
        hoverEnabled: true
        Accessible.role: Accessible.ListItem
        Accessible.name: text
        Accessible.selected: index === picker.currentIndex

        background: Rectangle {
            radius: 5
            color: entry.isHighlighted ? ReadableTint.of(Look.accent, picker.palette.base)
                                       : "transparent"
        }
        contentItem: Item {
            readonly property color ink: entry.isHighlighted ? "white" : picker.palette.text

            Symbol {
                x: 4
                anchors.verticalCenter: parent.verticalCenter
                name: "checkmark"
                size: 10
                color: parent.ink
                visible: entry.index === picker.currentIndex
            }
            Text {
                anchors.left: parent.left
                anchors.leftMargin: 22
                anchors.right: parent.right
                anchors.rightMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                text: entry.text
                textFormat: Text.PlainText
                font: entry.font
                color: parent.ink
                elide: Text.ElideRight
            }
        }
    }
    popup: Popup {
        y: picker.height + 4
        width: Math.max(picker.width, 150)
        margins: 8
        padding: 4
        implicitHeight: contentItem.implicitHeight + 2 * padding

        background: Rectangle {
            radius: 8
            color: picker.palette.base
            border.color: Qt.alpha(picker.palette.text, 0.16)
        }
        contentItem: ListView {
            implicitHeight: contentHeight
            clip: true
            model: picker.popup.visible ? picker.delegateModel : null
            currentIndex: picker.highlightedIndex
            boundsBehavior: Flickable.StopAtBounds
            // It scrolled to the current entry while it had no height yet.
            onHeightChanged: positionViewAtIndex(currentIndex, ListView.Contain)

            ScrollBar.vertical: SlimScrollBar { tint: picker.palette.text }
        }
    }
}
