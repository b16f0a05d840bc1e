#include "views/draft/DroppedImages.h"

#include <QImage>

#include <random>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

/// The accepted addresses, as texts, of one form of a drag.
QStringList accepted(const QString& format, const QByteArray& content) {
    QMimeData data;
    data.setData(format, content);
    return QUrl::toStringList(droppedImages::in(data));
}

QStringList acceptedList(const QByteArray& content) {
    return accepted(u"text/uri-list"_s, content);
}

bool isAccepted(const QByteArray& address) {
    return acceptedList(address).size() == 1;
}

QByteArray wide(const QString& text) {
    return {reinterpret_cast<const char*>(text.utf16()), 2 * text.size()}; // NOLINT: as it is sent
}

const QStringList one{u"file:///a/one.png"_s};

} // namespace

TEST(DroppedImages, TakesTheFormatsOfImagesByTheNamesOfFiles) {
    for (const QByteArray name : {"png", "jpg", "jpeg", "gif", "bmp", "tiff", "tif", "webp", "heic",
                                  "heif", "PNG", "JpEg", "tar.png"}) {
        EXPECT_TRUE(isAccepted("file:///a/picture." + name)) << name.constData();
    }
    for (const QByteArray name : {"pdf", "svg", "txt", "png.txt", "png~", "", "jpe", "ico"}) {
        EXPECT_FALSE(isAccepted("file:///a/picture." + name)) << name.constData();
    }
    EXPECT_FALSE(isAccepted("file:///a/png"));
    EXPECT_FALSE(isAccepted("file:///a/.png")) << "a hidden file without an extension";
    EXPECT_FALSE(isAccepted("file:///a.png/readme"));
}

TEST(DroppedImages, KeepsTheOrderAndPassesOverTheRest) {
    EXPECT_EQ(acceptedList("file:///b.png\r\nfile:///plan.pdf\r\nfile:///a.jpg\r\n"
                           "https://example.com/c.png\r\nfile:///b.png\r\n"),
              QStringList({u"file:///b.png"_s, u"file:///a.jpg"_s, u"file:///b.png"_s}));
    EXPECT_EQ(acceptedList("# two\nfile:///a/one.png\n\n"), one);
}

TEST(DroppedImages, TakesOnlyFiles) {
    EXPECT_FALSE(isAccepted("https://example.com/a.png"));
    EXPECT_FALSE(isAccepted("data:image/png;base64,AAAA.png"));
    EXPECT_FALSE(isAccepted("/home/user/a.png"));
    EXPECT_FALSE(isAccepted("a.png"));
}

TEST(DroppedImages, ReadsNamesWithBlanksAndForeignLetters) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(u"/bilder/zwei wörter 100%.png"_s),
                  QUrl::fromLocalFile(u"/写真/猫#1?.JPG"_s)});
    const QList<QUrl> found = droppedImages::in(data);
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0].toLocalFile(), u"/bilder/zwei wörter 100%.png"_s);
    EXPECT_EQ(found[1].toLocalFile(), u"/写真/猫#1?.JPG"_s);
}

TEST(DroppedImages, ReadsTheAddressesThatBrowsersGive) {
    const QString lines = u"file:///a/one.png\nThe title.png\nhttps://example.com/b.png\nB"_s;
    EXPECT_EQ(accepted(u"text/x-moz-url"_s, wide(lines)), one);
    EXPECT_EQ(accepted(u"text/x-moz-url"_s, lines.toUtf8()), one);
    EXPECT_EQ(accepted(u"text/x-moz-url"_s, wide(QChar::ByteOrderMark + lines)), one);
}

TEST(DroppedImages, ReadsAnAddressThatIsOnlyAText) {
    EXPECT_EQ(accepted(u"text/plain"_s, "file:///a/one.png"), one);
    EXPECT_EQ(accepted(u"text/plain;charset=utf-8"_s, "file:///a/one.png"), one);
    QMimeData data;
    data.setText(u"  FILE:///a/one.png \r\nfile:///b/two.jpg"_s);
    EXPECT_EQ(droppedImages::in(data).size(), 2);
    data.setText(u"Look at file:///a/one.png"_s);
    EXPECT_TRUE(droppedImages::in(data).isEmpty());
}

TEST(DroppedImages, ReadsEachOnlyOnceWhenADragSaysItInSeveralWays) {
    QMimeData data;
    data.setData(u"text/uri-list"_s, "file:///a/one.png\r\n");
    data.setData(u"text/x-moz-url"_s, wide(u"file:///a/one.png\none"_s));
    data.setText(u"file:///a/one.png"_s);
    EXPECT_EQ(QUrl::toStringList(droppedImages::in(data)), one);
}

TEST(DroppedImages, IgnoresAPictureWithoutAFile) {
    QMimeData data;
    data.setImageData(QImage(4, 4, QImage::Format_RGB32));
    data.setData(u"text/uri-list"_s, "https://example.com/a.png");
    EXPECT_TRUE(droppedImages::isOffered(data)) << "it might have one";
    EXPECT_TRUE(droppedImages::in(data).isEmpty());
}

TEST(DroppedImages, AreOfferedByFilesAndPicturesAlone) {
    QMimeData data;
    EXPECT_FALSE(droppedImages::isOffered(data));
    data.setText(u"words"_s);
    EXPECT_FALSE(droppedImages::isOffered(data));
    data.setUrls({QUrl(u"https://example.com/a.png"_s)});
    EXPECT_FALSE(droppedImages::isOffered(data));
    data.setUrls({QUrl(u"file:///plan.pdf"_s)});
    EXPECT_TRUE(droppedImages::isOffered(data));
}

TEST(DroppedImages, SurviveHostileData) {
    EXPECT_TRUE(acceptedList("").isEmpty());
    EXPECT_TRUE(acceptedList("\n\r\n\0\n").isEmpty());
    EXPECT_TRUE(acceptedList(QByteArray("file:///a.png\0", 14)).size() <= 1);
    EXPECT_FALSE(isAccepted("file:///a%00b.png")) << "no file has such a name";
    EXPECT_FALSE(isAccepted("file:"));
    EXPECT_FALSE(isAccepted("file://"));
    EXPECT_TRUE(isAccepted("file:///a%FF%FE.png")) << "not UTF-8, yet some file's name";
    EXPECT_TRUE(accepted(u"text/x-moz-url"_s, QByteArray("f\0i", 3)).isEmpty());
    EXPECT_TRUE(accepted(u"text/x-moz-url"_s, "\xFF\xFE").isEmpty());
    EXPECT_TRUE(
        accepted(u"text/plain"_s, "file:///" + QByteArray(5'000'000, 'a') + ".png").isEmpty());
    EXPECT_EQ(acceptedList(QByteArray("file:///a/one.png\n").repeated(10'000)).size(), 10'000);
}

TEST(DroppedImages, SurviveNoise) {
    std::mt19937 random(7); // NOLINT: the same in each run
    for (int round = 0; round < 2000; ++round) {
        QByteArray noise("file:///");
        const int length = static_cast<int>(random() % 64);
        for (int i = 0; i < length; ++i) {
            noise.append(static_cast<char>(random()));
        }
        noise.append(".png");
        for (const QString& format : {u"text/uri-list"_s, u"text/x-moz-url"_s, u"text/plain"_s}) {
            QMimeData data;
            data.setData(format, noise);
            for (const QUrl& url : droppedImages::in(data)) {
                ASSERT_TRUE(url.isLocalFile());
                ASSERT_TRUE(url.toLocalFile().endsWith(u".png"_s));
            }
        }
    }
}
