#pragma once

#include "views/components/NeonGlow.h"

#include <QFont>
#include <QString>
#include <QTextLayout>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// One short line with monospaced digits.
class NeonText : public NeonGlow {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)

public:
    using NeonGlow::NeonGlow;

    [[nodiscard]] QString text() const { return m_layout.text(); }
    void setText(const QString& text);
    [[nodiscard]] QFont font() const { return m_layout.font(); }
    void setFont(const QFont& font);

Q_SIGNALS:
    void textChanged();
    void fontChanged();

protected:
    void paintContent(QPainter& painter) const override;

private:
    void layOut();

    QTextLayout m_layout;
};

} // namespace quorvin
