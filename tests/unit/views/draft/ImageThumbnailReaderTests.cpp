#include "views/draft/ImageThumbnailReader.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QImageWriter>
#include <QSemaphore>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

class ImageThumbnailReader : public ::testing::Test {
protected:
    QString path(const QString& name) { return directory.filePath(name); }
    QString saved(const QImage& image, const QString& name) {
        EXPECT_TRUE(image.save(path(name)));
        return path(name);
    }
    QString written(const QByteArray& content, const QString& name) {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return path(name);
    }

    QTemporaryDir directory;
};

QImage filled(int width, int height, const QColor& color) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

QByteArray png(const QImage& image) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, "PNG"));
    return buffer.data();
}

/// Two frames of one pixel in a palette of red and blue: first a red, then a blue one.
QByteArray animation() {
    const QByteArray header("GIF89a\x01\x00\x01\x00\x80\x00\x00\xFF\x00\x00\x00\x00\xFF", 19);
    const auto frame = [](char code) {
        return QByteArray("\x21\xF9\x04\x00\x0A\x00\x00\x00"
                          "\x2C\x00\x00\x00\x00\x01\x00\x01\x00\x00\x02\x02",
                          20) +
               code + QByteArray("\x01\x00", 2);
    };
    return header + frame('\x44') + frame('\x4C') + ';';
}

} // namespace

TEST_F(ImageThumbnailReader, FillsTheSquareWithTheMiddle) {
    QImage image = filled(600, 200, Qt::red);
    for (int y = 0; y < 200; ++y) {
        for (int x = 200; x < 400; ++x) {
            image.setPixelColor(x, y, Qt::green);
        }
    }
    for (const QString& name : {u"a.png"_s, u"a.bmp"_s}) {
        const QImage small = imageThumbnail::read(saved(image, name), 80);
        ASSERT_EQ(small.size(), QSize(80, 80)) << name.toStdString();
        for (const QPoint& point : {QPoint(1, 1), QPoint(40, 40), QPoint(78, 78)}) {
            EXPECT_EQ(small.pixelColor(point), QColor(Qt::green));
        }
    }
}

TEST_F(ImageThumbnailReader, StandsAsTheCameraWasHeld) {
    QImage image = filled(200, 200, Qt::red);
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 200; ++x) {
            image.setPixelColor(x, y, Qt::blue);
        }
    }
    QImageWriter writer(path(u"turned.jpg"_s));
    writer.setTransformation(QImageIOHandler::TransformationRotate90);
    ASSERT_TRUE(writer.write(image));
    const QImage small = imageThumbnail::read(path(u"turned.jpg"_s), 80);
    ASSERT_EQ(small.size(), QSize(80, 80));
    // The upper half has come to the right.
    EXPECT_GT(small.pixelColor(70, 40).blue(), 200);
    EXPECT_GT(small.pixelColor(10, 40).red(), 200);
}

TEST_F(ImageThumbnailReader, LeavesASmallImageSmall) {
    EXPECT_EQ(imageThumbnail::read(saved(filled(7, 5, Qt::red), u"a.png"_s), 80).size(),
              QSize(5, 5));
}

TEST_F(ImageThumbnailReader, ReadsAHairThinImage) {
    EXPECT_EQ(imageThumbnail::read(saved(filled(30'000, 1, Qt::red), u"a.png"_s), 160).size(),
              QSize(1, 1));
    EXPECT_EQ(imageThumbnail::read(saved(filled(200, 20'000, Qt::red), u"b.png"_s), 160).size(),
              QSize(160, 160));
}

TEST_F(ImageThumbnailReader, KeepsTransparency) {
    QImage image(100, 100, QImage::Format_ARGB32);
    image.fill(QColor(255, 0, 0, 128));
    const QImage small = imageThumbnail::read(saved(image, u"a.png"_s), 80);
    EXPECT_EQ(small.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_NEAR(small.pixelColor(40, 40).alpha(), 128, 1);
}

TEST_F(ImageThumbnailReader, ShowsAnAnimationAtItsFirstFrame) {
    const QImage small = imageThumbnail::read(written(animation(), u"a.gif"_s), 80);
    ASSERT_EQ(small.size(), QSize(1, 1));
    EXPECT_EQ(small.pixelColor(0, 0), QColor(Qt::red));
}

TEST_F(ImageThumbnailReader, GoesByTheContentNotByTheName) {
    EXPECT_FALSE(
        imageThumbnail::read(written(png(filled(9, 9, Qt::red)), u"a.jpg"_s), 80).isNull());
}

TEST_F(ImageThumbnailReader, GivesNothingForWhatIsNoImage) {
    EXPECT_TRUE(imageThumbnail::read(QString(), 80).isNull());
    EXPECT_TRUE(imageThumbnail::read(path(u"missing.png"_s), 80).isNull());
    EXPECT_TRUE(imageThumbnail::read(directory.path(), 80).isNull());
    EXPECT_TRUE(imageThumbnail::read(written("", u"empty.png"_s), 80).isNull());
    EXPECT_TRUE(imageThumbnail::read(written("no picture", u"text.heic"_s), 80).isNull());
    EXPECT_TRUE(imageThumbnail::read(written(QByteArray("\0\0\0\x18"
                                                        "ftypheic",
                                                        12),
                                             u"a.heic"_s),
                                     80)
                    .isNull());
    EXPECT_TRUE(imageThumbnail::read(saved(filled(9, 9, Qt::red), u"a.png"_s), 0).isNull());
    EXPECT_TRUE(imageThumbnail::read(u"/a\0b.png"_s, 80).isNull());
}

TEST_F(ImageThumbnailReader, GivesNothingForACutFile) {
    const QByteArray whole = png(filled(300, 300, Qt::red));
    EXPECT_TRUE(imageThumbnail::read(written(whole.left(20), u"a.png"_s), 80).isNull());
    for (qsizetype length = 0; length < whole.size(); length += 7) {
        const QImage image = imageThumbnail::read(written(whole.left(length), u"b.png"_s), 80);
        EXPECT_TRUE(image.isNull() || image.size() == QSize(80, 80)) << length;
    }
}

TEST_F(ImageThumbnailReader, DoesNotWaitForAPipe) {
    const QString pipe = path(u"pipe.png"_s);
    ASSERT_EQ(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    EXPECT_TRUE(imageThumbnail::read(pipe, 80).isNull());
    EXPECT_TRUE(imageThumbnail::read(u"/dev/zero"_s, 80).isNull());
}

TEST_F(ImageThumbnailReader, HasRoomForALargePictureButNotForAnything) {
    (void)imageThumbnail::threads(); // sets the limit
    // Of 16 bits to the channel: 160 megabytes.
    QImage deep(5000, 4000, QImage::Format_RGBX64);
    deep.fill(Qt::red);
    EXPECT_EQ(imageThumbnail::read(saved(deep, u"deep.png"_s), 80).size(), QSize(80, 80));
    EXPECT_EQ(QImageReader::allocationLimit(), 256);
    const QByteArray bomb("P6 60000 60000 255\n123456789");
    EXPECT_TRUE(imageThumbnail::read(written(bomb, u"bomb.png"_s), 80).isNull());
}

TEST_F(ImageThumbnailReader, ReadsOnOtherThreadsFewAtATime) {
    const QString file = saved(filled(100, 100, Qt::red), u"a.png"_s);
    EXPECT_EQ(imageThumbnail::threads().maxThreadCount(), 2);
    QSemaphore gate;
    for (int i = 0; i < 2; ++i) {
        imageThumbnail::threads().start([&gate] { gate.acquire(); });
    }
    QFuture<QImage> wanted = imageThumbnail::readLater(file, 80);
    QFuture<QImage> cancelled = imageThumbnail::readLater(file, 80);
    cancelled.cancel();
    EXPECT_FALSE(wanted.isFinished()) << "all threads are held";
    gate.release(2);
    EXPECT_EQ(wanted.result().size(), QSize(80, 80));
    imageThumbnail::threads().waitForDone();
    EXPECT_EQ(cancelled.resultCount(), 0);
}
