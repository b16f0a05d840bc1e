import QtQuick
import Quorvin

CompactIconButton {
    systemName: "paperclip"
    tint: "#ec4899"
    tooltip: qsTr("Attach image (or drag & drop)")
}
