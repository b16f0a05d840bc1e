#include "DraftViewTest.h"
#include "theme/HexColor.h"
#include "views/draft/ImageThumbnailReader.h"

#include <QSemaphore>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

const QColor orange = hexColor(u"f97316");

class ImagePreviewBar : public DraftViewTest {
protected:
    QList<QQuickItem*> thumbnails() { return items(u"imageThumbnail"_s); }
    bool isLoaded(QQuickItem* thumbnail) {
        return itemIn(thumbnail, u"thumbnailPicture"_s)->property("isLoaded").toBool();
    }
    bool showsPlaceholder(QQuickItem* thumbnail) {
        return itemIn(thumbnail, u"thumbnailText"_s)->isVisible();
    }
};

/// Keeps the threads that read pictures busy.
class ReadersBlock {
public:
    ReadersBlock() {
        QThreadPool& threads = imageThumbnail::threads();
        for (int i = 0; i < threads.maxThreadCount(); ++i) {
            threads.start([this] { m_end.acquire(); });
        }
    }
    ReadersBlock(const ReadersBlock&) = delete;
    ReadersBlock& operator=(const ReadersBlock&) = delete;
    ~ReadersBlock() {
        m_end.release(imageThumbnail::threads().maxThreadCount());
        imageThumbnail::threads().waitForDone();
    }

private:
    QSemaphore m_end;
};

} // namespace

TEST_F(ImagePreviewBar, AsksForImages) {
    showPanel();
    const QRectF zone = frameOf(item(u"imageDropZone"_s));
    EXPECT_EQ(zone.height(), 44);
    EXPECT_EQ(zone.width(), 540 - 2 * 12);
    EXPECT_EQ(textOf(u"imageDropZoneHint"_s), u"Drop images here or click Attach"_s);
    EXPECT_EQ(propertyOf(u"dropZoneSymbol"_s, "name"), u"plus.circle"_s);
    EXPECT_EQ(propertyOf(u"dropZoneGround"_s, "radius"), 8);
    EXPECT_EQ(propertyOf(u"dropZoneGround"_s, "lineWidth"), 1.5);
    EXPECT_EQ(propertyOf(u"dropZoneGround"_s, "dash"), 6);
    EXPECT_EQ(propertyOf(u"dropZoneGround"_s, "gap"), 4);
    EXPECT_EQ(accessible(item(u"imageDropZone"_s))->text(QAccessible::Name),
              u"Drop images here or click Attach"_s);
    click(u"imageDropZone"_s);
    pickImages(pictures(2));
    EXPECT_EQ(app().attachedImages().size(), 2);
    EXPECT_FALSE(item(u"imageDropZone"_s)->isVisible());
}

TEST_F(ImagePreviewBar, TurnsOrangeUnderThePointer) {
    showPanel();
    expectColor(colorOf(u"dropZoneGround"_s), hexColor(u"2a2a2a"));
    EXPECT_EQ(propertyOf(u"dropZoneGround"_s, "fill").value<QColor>().alpha(), 0);
    EXPECT_NE(colorOf(u"imageDropZoneHint"_s), orange);
    hover(u"imageDropZone"_s);
    expectColor(colorOf(u"dropZoneGround"_s), orange);
    expectColor(propertyOf(u"dropZoneGround"_s, "fill").value<QColor>(), withAlpha(orange, 0.08));
    expectColor(colorOf(u"imageDropZoneHint"_s), orange);
    expectColor(colorOf(u"dropZoneSymbol"_s), orange);
    leave();
    expectColor(colorOf(u"dropZoneGround"_s), hexColor(u"2a2a2a"));
}

TEST_F(ImagePreviewBar, HasAHeadRow) {
    showPanel();
    app().attachImages(pictures(7));
    (void)grab();
    EXPECT_EQ(textOf(u"imagesTitle"_s), u"Images"_s);
    EXPECT_EQ(propertyOf(u"imagesTitle"_s, "font").value<QFont>().pixelSize(), 12);
    EXPECT_EQ(textOf(u"imagesCount"_s), u"7 / 18"_s);
    EXPECT_EQ(propertyOf(u"imagesCount"_s, "font").value<QFont>().pixelSize(), 11);
    for (const QString& name : {u"addImagesButton"_s, u"clearImagesButton"_s}) {
        EXPECT_EQ(item(name)->size(), QSizeF(22, 22));
        auto* const ground = item(name)->property("background").value<QQuickItem*>();
        EXPECT_EQ(ground->property("radius"), 4);
        expectColor(ground->property("color").value<QColor>(), withAlpha(Qt::white, 0.08));
    }
    EXPECT_EQ(propertyOf(u"addImagesButton"_s, "sign"), u"+"_s);
    EXPECT_EQ(propertyOf(u"clearImagesButton"_s, "sign"), u"×"_s);
    EXPECT_EQ(accessible(item(u"addImagesButton"_s))->text(QAccessible::Name), u"Add images"_s);
    EXPECT_EQ(accessible(item(u"clearImagesButton"_s))->text(QAccessible::Name),
              u"Remove all images"_s);
    app().setDraftText(u"stays"_s);
    click(u"clearImagesButton"_s);
    EXPECT_TRUE(app().attachedImages().isEmpty());
    EXPECT_EQ(app().draftText(), u"stays"_s);
}

TEST_F(ImagePreviewBar, HasSmallerPicturesForMoreImages) {
    const struct {
        int count;
        int size;
        int rows;
    } rows[] = {{1, 80, 1}, {5, 80, 1}, {6, 64, 1}, {10, 64, 2}, {11, 48, 2}, {18, 48, 2}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.count);
        showPanel();
        app().attachImages(pictures(row.count));
        (void)grab();
        ASSERT_EQ(thumbnails().size(), row.count);
        for (QQuickItem* thumbnail : thumbnails()) {
            EXPECT_EQ(thumbnail->size(), QSizeF(row.size, row.size));
        }
        EXPECT_EQ(item(u"imageGrid"_s)->height(), row.rows * (row.size + 4) - 4 + 6);
        finishReading();
        close();
        endProgram();
    }
}

TEST_F(ImagePreviewBar, ShowsThePicturesInTheirOrder) {
    showPanel();
    app().attachImages(pictures(1, Qt::red) + pictures(1, Qt::blue));
    finishReading();
    EXPECT_EQ(color(middleOf(thumbnails()[0])), QColor(Qt::red));
    EXPECT_EQ(color(middleOf(thumbnails()[1])), QColor(Qt::blue));
    EXPECT_LT(frameOf(thumbnails()[0]).left(), frameOf(thumbnails()[1]).left());
}

TEST_F(ImagePreviewBar, ShowsALargePictureWithoutWaitingForIt) {
    showPanel();
    QImage photo(5000, 4000, QImage::Format_RGB32); // 20 megapixels
    photo.fill(Qt::red);
    const QString path = directory.filePath(u"photo.jpg"_s);
    ASSERT_TRUE(photo.save(path));
    {
        const ReadersBlock block;
        app().attachImages({QUrl::fromLocalFile(path)});
        expectColor(color(middleOf(thumbnails()[0]) + QPoint(30, 20)), hexColor(u"1a1a1a"));
        EXPECT_TRUE(showsPlaceholder(thumbnails()[0]));
        EXPECT_FALSE(isLoaded(thumbnails()[0]));
    }
    finishReading();
    EXPECT_TRUE(isLoaded(thumbnails()[0]));
    EXPECT_FALSE(showsPlaceholder(thumbnails()[0]));
    EXPECT_NEAR(color(middleOf(thumbnails()[0])).red(), 254, 2);
}

TEST_F(ImagePreviewBar, ForgetsAPictureThatIsTakenAwayUnread) {
    showPanel();
    {
        const ReadersBlock block;
        app().attachImages(pictures(3));
        (void)grab();
        app().clearDraft();
        (void)grab();
    }
    finishReading();
    EXPECT_TRUE(thumbnails().isEmpty());
}

TEST_F(ImagePreviewBar, ShowsAPlaceholderForWhatCannotBeShown) {
    showPanel();
    const QString broken = directory.filePath(u"broken.png"_s);
    QFile file(broken);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not a picture");
    file.close();
    app().attachImages({QUrl(u"file:///nowhere/gone.png"_s), QUrl::fromLocalFile(broken)});
    finishReading();
    ASSERT_EQ(thumbnails().size(), 2);
    for (QQuickItem* thumbnail : thumbnails()) {
        EXPECT_TRUE(showsPlaceholder(thumbnail));
        QQuickItem* const placeholder = itemIn(thumbnail, u"thumbnailPlaceholder"_s);
        EXPECT_EQ(placeholder->property("radius"), 4);
        expectColor(placeholder->property("color").value<QColor>(), hexColor(u"1a1a1a"));
        EXPECT_EQ(itemIn(thumbnail, u"thumbnailText"_s)->property("text"), u"IMG"_s);
    }
}

TEST_F(ImagePreviewBar, TakesOneImageAway) {
    showPanel();
    const QList<QUrl> images = pictures(3);
    app().attachImages(images);
    finishReading();
    (void)grab();
    QQuickItem* const second = thumbnails()[1];
    QQuickItem* const button = itemIn(second, u"removeImageButton"_s);
    EXPECT_EQ(button->size(), QSizeF(16, 16));
    EXPECT_EQ(frameOf(button).right() - frameOf(second).right(), 2);
    EXPECT_EQ(frameOf(second).top() - frameOf(button).top(), 2);
    auto* const ground = button->property("background").value<QQuickItem*>();
    EXPECT_EQ(ground->property("radius"), 8);
    expectColor(ground->property("color").value<QColor>(), withAlpha(Qt::black, 0.7));
    clickAt(middleOf(button));
    EXPECT_EQ(app().attachedImages(), QList({images[0], images[2]}));
    EXPECT_TRUE(isLoaded(thumbnails()[1])) << "those that stay are not read again";
}

TEST_F(ImagePreviewBar, NamesTheImagesByTheirFiles) {
    showPanel();
    app().attachImages(
        {QUrl::fromLocalFile(u"/bilder/zwei wörter 100%.png"_s), QUrl(u"file:///a%FF.png"_s)});
    finishReading();
    QAccessibleInterface* const first = accessible(thumbnails()[0]);
    EXPECT_EQ(first->text(QAccessible::Name), u"zwei wörter 100%.png"_s);
    EXPECT_EQ(first->role(), QAccessible::Graphic);
    EXPECT_EQ(accessible(itemIn(thumbnails()[0], u"removeImageButton"_s))->text(QAccessible::Name),
              u"Remove zwei wörter 100%.png"_s);
    EXPECT_TRUE(accessible(thumbnails()[1])->text(QAccessible::Name).endsWith(u".png"_s));
}
