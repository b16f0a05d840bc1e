import QtQuick

/// Content that may be higher than its place. It scrolls by the wheel, and by itself to whatever
/// gets the keyboard focus; dragging is left to what stands in it.
Flickable {
    id: page

    /// What `show` leaves free above and below the item.
    property real margin: 0
    readonly property real maximumContentY: Math.max(0, contentHeight - height)

    /// Scrolls as little as brings the item into view, its beginning before its end.
    function show(item: Item) {
        const top = item.mapToItem(contentItem, 0, 0).y;
        const lowest = Math.min(top - margin, maximumContentY);
        const highest = Math.min(top + item.height + margin, contentHeight) - height;
        contentY = Math.max(0, Math.min(lowest, Math.max(highest, contentY)));
    }
    function isWithin(item: Item): bool {
        for (let ancestor = item; ancestor; ancestor = ancestor.parent) {
            if (ancestor === contentItem) {
                return true;
            }
        }
        return false;
    }

    contentWidth: width
    clip: true
    interactive: false

    onMaximumContentYChanged: contentY = Math.min(contentY, maximumContentY)

    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => {
            const distance = event.pixelDelta.y || event.angleDelta.y / 2;
            page.contentY = Math.max(0, Math.min(page.maximumContentY, page.contentY - distance));
        }
    }
    Connections {
        target: page.Window.window

        function onActiveFocusItemChanged() {
            const item = page.Window.activeFocusItem;
            if (item && page.isWithin(item)) {
                page.show(item);
            }
        }
    }
}
