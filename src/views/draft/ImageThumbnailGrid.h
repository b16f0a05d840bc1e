#pragma once

#include <QObject>
#include <QPointF>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// Where the pictures of attached images stand: squares in rows, of a size that goes down as they
/// get more. All in points of the grid; `width` is what it may fill.
class ImageThumbnailGrid final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    static constexpr int largestSize = 80;

    /// The side of each, for that many images.
    Q_INVOKABLE [[nodiscard]] static int size(int count);
    /// As many as fit, but at least one. They share the width.
    Q_INVOKABLE [[nodiscard]] static int columns(int count, double width);
    /// The upper left corner of one, on whole points.
    Q_INVOKABLE [[nodiscard]] static QPointF place(int index, int count, double width);
    /// Of the rows that are needed, with some air below.
    Q_INVOKABLE [[nodiscard]] static int height(int count, double width);
};

} // namespace quorvin
