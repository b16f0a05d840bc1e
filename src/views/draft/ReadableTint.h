#pragma once

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// Colours that do both as a text on a faint tint of themselves and as the ground of a white text.
class ReadableTint final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// The colour itself, or, with the same hue, a darker one if white could not be read on it, or
    /// a lighter one if it could not be read on a dark `surface`.
    Q_INVOKABLE [[nodiscard]] static QColor of(const QColor& color, const QColor& surface);
    /// 1 to 21, of WCAG 2.
    [[nodiscard]] static double contrast(const QColor& one, const QColor& other);
};

} // namespace quorvin
