#include "fuzz/Fuzzing.h"
#include "views/draft/DroppedImages.h"

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::Parts;
using quorvin::testing::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Parts parts(data, size); // a list of addresses, Mozilla's list, a text
    QMimeData drag;
    const auto offer = [&drag](const QString& format, const QByteArray& content) {
        if (!content.isEmpty()) {
            drag.setData(format, content);
        }
    };
    offer(u"text/uri-list"_s, parts[0]);
    offer(u"text/x-moz-url"_s, parts[1]);
    offer(u"text/plain"_s, parts[2]);

    const QList<QUrl> images = droppedImages::in(drag);
    require(images.isEmpty() || droppedImages::isOffered(drag), "what is taken is welcome");
    QMimeData again;
    again.setUrls(images);
    require(droppedImages::in(again) == images, "images can be dropped on");
    for (const QUrl& image : images) {
        const QString path = image.toLocalFile();
        require(image.isLocalFile() && !path.isEmpty(), "an image is a file");
        require(!path.contains(QChar::Null), "whose path nothing cuts");
    }
    return 0;
}
