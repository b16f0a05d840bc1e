import QtQuick
import QtQuick.Layouts
import Quorvin

/// The attached images, or a place to drop some.
ColumnLayout {
    id: bar

    required property QtObject appState

    readonly property var images: appState.attachedImages
    readonly property int count: images.length

    /// The user wants to pick some.
    signal pick()

    spacing: 8

    ImageDropZone {
        objectName: "imageDropZone"
        Layout.fillWidth: true
        visible: bar.count === 0
        onClicked: bar.pick()
    }

    RowLayout {
        visible: bar.count > 0
        spacing: 8

        Text {
            objectName: "imagesTitle"
            text: qsTr("Images")
            font: Typeface.font(12)
            color: Look.textPrimary
        }
        DigitText {
            objectName: "imagesCount"
            text: bar.count + " / 18"
            font: Typeface.font(11)
            color: Look.textSecondary
        }
        Item {
            Layout.fillWidth: true
        }
        ImageBarButton {
            objectName: "addImagesButton"
            sign: "+"
            text: qsTr("Add images")
            onClicked: bar.pick()
        }
        ImageBarButton {
            objectName: "clearImagesButton"
            sign: "×"
            text: qsTr("Remove all images")
            onClicked: bar.appState.clearImages()
        }
    }

    Item {
        id: grid

        objectName: "imageGrid"
        Layout.fillWidth: true
        Layout.preferredHeight: ImageThumbnailGrid.height(bar.count, width)
        visible: bar.count > 0

        Repeater {
            model: AttachedImagesModel {
                images: bar.images
            }

            ImageThumbnail {
                required property int index
                readonly property point place: ImageThumbnailGrid.place(index, bar.count,
                                                                        grid.width)

                objectName: "imageThumbnail"
                x: place.x
                y: place.y
                size: ImageThumbnailGrid.size(bar.count)
                onRemove: bar.appState.removeImage(url)
            }
        }
    }
}
