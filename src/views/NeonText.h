#pragma once

#include "views/NeonGlow.h"

#include <QFont>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// One short line with monospaced digits: each digit takes the room of the widest, so that a
/// counting number doesn't tremble.
class NeonText : public NeonGlow {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)

public:
    explicit NeonText(QQuickItem* parent = nullptr);

    [[nodiscard]] QString text() const { return m_text; }
    void setText(const QString& text);
    [[nodiscard]] QFont font() const { return m_font; }
    void setFont(const QFont& font);

Q_SIGNALS:
    void textChanged();
    void fontChanged();

protected:
    void paintContent(QPainter& painter) const override;

private:
    void measure();

    QString m_text;
    QFont m_font;
};

} // namespace quorvin
