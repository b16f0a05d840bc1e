#include "views/draft/DroppedImages.h"

#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace quorvin::droppedImages {

namespace {

/// No address of a file is longer, even if each byte of its path is escaped.
constexpr qsizetype longestAddress = 3 * 4096 + 64;

bool isFile(const QUrl& url) {
    // No file's name holds a null, and a terminal would cut the path there.
    return url.isLocalFile() && !url.path(QUrl::FullyDecoded).contains(QChar::Null);
}

bool isImage(const QUrl& file) {
    static const std::array extensions{u"png"_s,  u"jpg"_s, u"jpeg"_s, u"gif"_s,  u"bmp"_s,
                                       u"tiff"_s, u"tif"_s, u"webp"_s, u"heic"_s, u"heif"_s};
    const QFileInfo info(file.path());
    if (info.completeBaseName().isEmpty()) {
        return false; // a hidden file's name is no extension
    }
    const QString extension = info.suffix().toLower();
    return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

/// The addresses of files that stand on lines of their own.
QList<QUrl> filesIn(QStringView text) {
    QList<QUrl> files;
    for (const QStringView line : text.tokenize(u'\n')) {
        const QStringView address = line.trimmed();
        if (address.size() > longestAddress || !address.startsWith(u"file:", Qt::CaseInsensitive)) {
            continue;
        }
        const QUrl url(address.toString());
        if (isFile(url)) {
            files.append(url);
        }
    }
    return files;
}

/// "text/x-moz-url" has its lines in UTF-16, an address and a title in turn; some write UTF-8.
QString decodedMozillaAddresses(const QByteArray& data) {
    const bool isWide = data.size() >= 2 && (data[1] == '\0' || data.startsWith("\xFF\xFE") ||
                                             data.startsWith("\xFE\xFF"));
    QStringDecoder decoder(isWide ? QStringDecoder::Utf16 : QStringDecoder::Utf8);
    return decoder.decode(data);
}

QList<QUrl> files(const QMimeData& data) {
    QList<QUrl> found = data.urls();
    found.removeIf([](const QUrl& url) { return !isFile(url); });
    // One drag says the same in several ways.
    if (found.isEmpty()) {
        found = filesIn(decodedMozillaAddresses(data.data(u"text/x-moz-url"_s)));
    }
    if (found.isEmpty()) {
        found = filesIn(data.text());
    }
    return found;
}

} // namespace

bool isOffered(const QMimeData& data) {
    return data.hasImage() || !files(data).isEmpty();
}

QList<QUrl> in(const QMimeData& data) {
    QList<QUrl> images = files(data);
    images.removeIf([](const QUrl& file) { return !isImage(file); });
    return images;
}

} // namespace quorvin::droppedImages
