import QtQuick
import QtQuick.Controls
import Quorvin

/// The rows of a dialog, which are controls. Up and Down move from row to row; the current one has the focus.
ListView {
    id: list

    property color scrollBarTint: Look.textSecondary
    /// To the right of the rows, for the scroll bar.
    readonly property int scrollBarRoom: 12

    function step(by: int) {
        const index = currentIndex + by;
        if (index >= 0 && index < count) {
            currentIndex = index; // which moves the focus, but doesn't say that it was a key
            currentItem.focusReason = Qt.TabFocusReason;
        }
    }

    clip: true
    spacing: 6
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: false
    highlightMoveDuration: 120
    highlightMoveVelocity: -1
    Accessible.role: Accessible.List
    Keys.onUpPressed: step(-1)
    Keys.onDownPressed: step(1)

    ScrollBar.vertical: SlimScrollBar { tint: list.scrollBarTint }
}
