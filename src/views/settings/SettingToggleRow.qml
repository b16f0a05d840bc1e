import QtQuick
import Quorvin

/// A setting that is on or off.
SettingRow {
    id: row

    required property bool value
    property bool disabled: false
    property alias divided: row.isDivided

    signal flipped(bool on)

    isSaidByControl: true

    QvnToggle {
        objectName: "toggle"
        enabled: !row.disabled
        isOn: row.value
        Accessible.name: row.label
        Accessible.description: row.description
        onFlipped: on => row.flipped(on)
    }
}
