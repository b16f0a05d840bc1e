#pragma once

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// Where the dots for attached images stand on the waveform strip, at its lower right. All in
/// points of the strip; `size` is the strip's.
class CompactAttachmentDots final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// How many are drawn for that many images.
    Q_INVOKABLE [[nodiscard]] static int dotCount(int imageCount);
    /// From the left; the row ends at the same place whatever their number.
    Q_INVOKABLE [[nodiscard]] static QRectF dot(int index, int imageCount, QSizeF size);
    /// The dot that a tap at `location` means, with some room around each; -1 for none.
    Q_INVOKABLE [[nodiscard]] static int dotAt(QPointF location, int imageCount, QSizeF size);
};

} // namespace quorvin
