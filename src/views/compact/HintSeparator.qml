import QtQuick
import Quorvin

/// A thin upright rule between hints.
Item {
    implicitWidth: 5
    implicitHeight: 14

    Rectangle {
        x: 2
        width: 1
        height: 14
        color: "white"
        opacity: 0.12
    }
}
