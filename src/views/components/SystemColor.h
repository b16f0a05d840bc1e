#pragma once

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// Colours that are the platform's, not the theme's; each has a value for the light appearance and
/// one for the dark.
class SystemColor : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor orange READ orange NOTIFY appearanceChanged)

public:
    explicit SystemColor(QObject* parent = nullptr);

    [[nodiscard]] QColor orange() const;

Q_SIGNALS:
    void appearanceChanged();
};

} // namespace quorvin
