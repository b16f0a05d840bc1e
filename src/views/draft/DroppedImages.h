#pragma once

#include <QList>
#include <QMimeData>
#include <QUrl>

/// What a drag offers the draft.
namespace quorvin::droppedImages {

/// Whether it is worth a welcome: a file, whatever its kind, or an image.
[[nodiscard]] bool isOffered(const QMimeData& data);

/// The files whose names are those of images, in the drag's order, one as often as it comes.
/// Whatever else there is, a picture without a file included, is passed over.
[[nodiscard]] QList<QUrl> in(const QMimeData& data);

} // namespace quorvin::droppedImages
