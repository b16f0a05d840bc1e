#include "DraftViewTest.h"
#include "theme/HexColor.h"

#include <QDropEvent>
#include <QMimeData>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

const QColor orange = hexColor(u"f97316");

/// A drag from another program, over the panel unless another place is named.
class ImageDrop : public DraftViewTest {
protected:
    /// Returns whether it is welcome.
    bool enter(const QMimeData& data) {
        QDragEnterEvent event(middleOf(u"panel"_s), Qt::CopyAction | Qt::MoveAction, &data,
                              Qt::LeftButton, {});
        return deliver(event);
    }
    bool moveTo(const QString& name, const QMimeData& data) {
        QDragMoveEvent event(middleOf(name), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                             {});
        return deliver(event);
    }
    void leavePanel() {
        QDragLeaveEvent event;
        QCoreApplication::sendEvent(&window(), &event);
    }
    bool drop(const QMimeData& data, const QString& name = u"panel"_s) {
        if (!enter(data)) {
            return false;
        }
        moveTo(name, data);
        QDropEvent event(middleOf(name), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                         {});
        return deliver(event);
    }
    bool dropUrls(const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        return drop(data);
    }
    bool dropAs(const QString& format, const QByteArray& content) {
        QMimeData data;
        data.setData(format, content);
        return drop(data);
    }
    bool isTargeted() { return propertyOf(u"panel"_s, "isDropTargeted").toBool(); }

private:
    bool deliver(QDropEvent& event) {
        event.ignore();
        QCoreApplication::sendEvent(&window(), &event);
        EXPECT_TRUE(!event.isAccepted() || event.dropAction() == Qt::CopyAction)
            << "the files stay where they are";
        return event.isAccepted();
    }
};

} // namespace

TEST_F(ImageDrop, LightsThePanelUpWhileFilesAreHeldOverIt) {
    showPanel();
    QMimeData data;
    data.setUrls(pictures(1));
    EXPECT_TRUE(enter(data));
    EXPECT_TRUE(moveTo(u"draftText"_s, data));
    EXPECT_TRUE(isTargeted());
    expectColor(propertyOf(u"draftGround"_s, "fill").value<QColor>(), withAlpha(orange, 0.08));
    expectColor(colorOf(u"draftGround"_s), orange);
    EXPECT_EQ(propertyOf(u"draftGround"_s, "lineWidth"), 2.5);
    EXPECT_EQ(propertyOf(u"draftGround"_s, "dash"), 8);
    EXPECT_EQ(propertyOf(u"draftGround"_s, "gap"), 5);
    leavePanel();
    EXPECT_FALSE(isTargeted());
    EXPECT_EQ(propertyOf(u"draftGround"_s, "lineWidth"), 1);
    EXPECT_TRUE(app().attachedImages().isEmpty());
}

TEST_F(ImageDrop, HasADashedLineAroundThePanel) {
    showPanel();
    QMimeData data;
    data.setUrls(pictures(1));
    EXPECT_TRUE(enter(data));
    // Along the left edge, dashes and gaps are in the measure of 8 to 5.
    const QImage image = grab();
    const QRectF panel = frameOf(item(u"panel"_s));
    int lit = 0;
    int all = 0;
    for (int y = qRound(panel.top()) + 20; y < qRound(panel.bottom()) - 20; ++y, ++all) {
        const QColor pixel = image.pixelColor(qRound(panel.left()) + 1, y);
        lit += pixel.blue() < 128 ? 1 : 0; // the gaps are nearly white, as the test's window
    }
    EXPECT_NEAR(static_cast<double>(lit) / all, 8.0 / 13, 0.06);
}

TEST_F(ImageDrop, AttachesFilesInTheirOrder) {
    showPanel();
    const QList<QUrl> images = pictures(3);
    EXPECT_TRUE(dropUrls({images[2], images[0], images[1]}));
    EXPECT_EQ(app().attachedImages(), QList({images[2], images[0], images[1]}));
    EXPECT_EQ(feed(ActivityType::attach), QStringList({u"1 image(s) attached (1/18 total)"_s,
                                                       u"1 image(s) attached (2/18 total)"_s,
                                                       u"1 image(s) attached (3/18 total)"_s}));
    EXPECT_FALSE(isTargeted());
}

TEST_F(ImageDrop, IsTakenOnEveryPartOfThePanel) {
    showPanel();
    const QList<QUrl> images = pictures(5);
    qsizetype count = 0;
    for (const QString& name : {u"draftTitle"_s, u"draftText"_s, u"imagePreviewBar"_s,
                                u"copyButton"_s, u"historyButton"_s}) {
        QMimeData data;
        data.setUrls({images[count]});
        EXPECT_TRUE(drop(data, name)) << name.toStdString();
        EXPECT_EQ(app().attachedImages().size(), ++count) << name.toStdString();
    }
    EXPECT_EQ(app().draftText(), QString()) << "nor is the address a text";
}

TEST_F(ImageDrop, TakesWhatFileManagersAndBrowsersGive) {
    showPanel();
    const QUrl image = pictures(1).first();
    const QByteArray address = image.toEncoded();
    EXPECT_TRUE(dropAs(u"text/uri-list"_s, address + "\r\n"));
    EXPECT_TRUE(dropAs(u"text/plain"_s, address));
    const QString titled = QString::fromUtf8(address) + u"\nA title"_s;
    EXPECT_TRUE(dropAs(u"text/x-moz-url"_s, {reinterpret_cast<const char*>(titled.utf16()),
                                             2 * titled.size()})); // NOLINT: as it is sent
    EXPECT_EQ(app().attachedImages(), QList({image, image, image}));
}

TEST_F(ImageDrop, PassesOverOtherFilesInSilence) {
    showPanel();
    const QUrl image = pictures(1).first();
    EXPECT_TRUE(dropUrls({QUrl(u"file:///plan.pdf"_s), image, QUrl(u"file:///notes.txt"_s)}));
    EXPECT_EQ(app().attachedImages(), QList({image}));
    EXPECT_TRUE(dropUrls({QUrl(u"file:///plan.pdf"_s)}));
    EXPECT_EQ(app().attachedImages(), QList({image}));
    EXPECT_FALSE(app().showError());
}

TEST_F(ImageDrop, DoesNotTakeTextsAndLinks) {
    showPanel();
    EXPECT_FALSE(dropAs(u"text/plain"_s, "words"));
    EXPECT_FALSE(dropUrls({QUrl(u"https://example.com/a.png"_s)}));
    EXPECT_FALSE(isTargeted());
    EXPECT_EQ(app().draftText(), QString());
}

TEST_F(ImageDrop, TakesAPictureWithItsFile) {
    showPanel();
    const QUrl image = pictures(1).first();
    QMimeData data;
    data.setImageData(QImage(4, 4, QImage::Format_RGB32));
    EXPECT_TRUE(drop(data));
    EXPECT_TRUE(app().attachedImages().isEmpty()) << "a picture that is no file";
    data.setUrls({image});
    EXPECT_TRUE(drop(data));
    EXPECT_EQ(app().attachedImages(), QList({image}));
}

TEST_F(ImageDrop, CountsAFileThatIsGone) {
    showPanel();
    const QUrl gone(u"file:///nowhere/gone.png"_s);
    EXPECT_TRUE(dropUrls({gone}));
    EXPECT_EQ(app().attachedImages(), QList({gone}));
}

TEST_F(ImageDrop, EndsAtEighteenImages) {
    showPanel();
    const QList<QUrl> images = pictures(20);
    app().attachImages(images.first(15));
    EXPECT_TRUE(dropUrls(images.sliced(15)));
    EXPECT_EQ(app().attachedImages(), images.first(18));
    EXPECT_EQ(textOf(u"imagesCount"_s), u"18 / 18"_s);
    const auto said = feed();
    EXPECT_TRUE(dropUrls(images.last(1)));
    EXPECT_EQ(app().attachedImages(), images.first(18));
    EXPECT_EQ(feed(), said);
}
