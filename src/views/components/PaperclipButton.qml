import QtQuick
import Quorvin

CompactIconButton {
    systemName: "paperclip"
    tint: "#ec4899"
    toolTip: qsTr("Attach image (or drag & drop)")
}
