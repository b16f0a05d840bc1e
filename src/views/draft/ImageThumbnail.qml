import QtQuick
import QtQuick.Controls
import Quorvin

/// An attached image and the button that takes it away.
Item {
    id: thumbnail

    required property url url
    required property double size
    readonly property string fileName: picture.fileName

    signal remove()

    width: size
    height: size
    Accessible.role: Accessible.Graphic
    Accessible.name: fileName

    Rectangle {
        objectName: "thumbnailPlaceholder"
        anchors.fill: parent
        radius: 4
        color: Look.bgOverlay

        DigitText {
            objectName: "thumbnailText"
            anchors.centerIn: parent
            visible: !picture.isLoaded
            text: "IMG"
            font: Typeface.font(10)
            color: Look.textSecondary
            Accessible.ignored: true
        }
    }
    ImageThumbnailPicture {
        id: picture

        objectName: "thumbnailPicture"
        anchors.fill: parent
        url: thumbnail.url
        radius: 4
    }
    AbstractButton {
        id: button

        objectName: "removeImageButton"
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.rightMargin: -2
        anchors.topMargin: -2
        width: 16
        height: 16
        focusPolicy: Qt.TabFocus
        text: qsTr("Remove %1").arg(thumbnail.fileName)
        background: Rectangle {
            radius: 8
            color: Qt.rgba(0, 0, 0, 0.7)

            FocusRing {
                control: button
            }
        }
        contentItem: Text {
            text: "×"
            font: Typeface.font(10)
            color: "white"
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
        Accessible.name: text
        Accessible.onPressAction: clicked()
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
        onClicked: thumbnail.remove()
    }
}
