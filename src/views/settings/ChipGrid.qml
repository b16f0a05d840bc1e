import QtQuick

/// Chips in columns of one width, on a card. Each takes `chipWidth`.
Item {
    id: chips

    required property int columns
    default property alias content: grid.data

    readonly property int margin: 16
    readonly property int chipWidth: (width - 2 * margin + grid.spacing) / columns - grid.spacing

    width: parent?.width ?? 0
    implicitHeight: grid.height + 2 * margin

    Grid {
        id: grid

        x: Math.round((parent.width - width) / 2)
        y: chips.margin
        columns: chips.columns
        spacing: 8
    }
}
