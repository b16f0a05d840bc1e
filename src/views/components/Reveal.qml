import QtQuick

/// A part of a column that comes and goes: it moves in from an edge while it fades in, and what
/// follows makes room for it.
Item {
    id: reveal

    default property alias content: holder.data
    property bool isShown: false
    /// From the top edge, or else from the bottom.
    property bool isFromTop: true
    /// Distance to what stands above; it comes and goes as well.
    property real gap: 0
    property int duration: 200

    readonly property real contentHeight: holder.childrenRect.height
    /// How much of it is there: 0 to 1.
    property real amount: isShown ? 1 : 0

    implicitHeight: Math.round((gap + contentHeight) * amount)
    visible: amount > 0
    opacity: amount
    clip: amount < 1 && isFromTop
    enabled: isShown

    Behavior on amount {
        NumberAnimation {
            duration: reveal.duration
            easing.type: Easing.InOutQuad
        }
    }

    Item {
        id: holder

        y: reveal.isFromTop ? reveal.height - reveal.contentHeight
                            : reveal.gap + Math.round((1 - reveal.amount) * reveal.contentHeight)
        width: parent.width
        height: reveal.contentHeight
    }
}
