import QtQuick

/// Chips in columns of one width, on a card. Each takes `chipWidth`.
Item {
    id: chips

    required property int columns
    default property alias content: grid.data

    readonly property real chipWidth: (grid.width - (columns - 1) * grid.spacing) / columns

    width: parent?.width ?? 0
    implicitHeight: grid.height + 2 * grid.x

    Grid {
        id: grid

        x: 16
        y: x
        width: parent.width - 2 * x
        columns: chips.columns
        spacing: 8
    }
}
