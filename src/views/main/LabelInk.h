#pragma once

#include "views/components/ShadowedInk.h"

#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// A symbol and a short text beside it, or one of the two, each where it is put.
class LabelInk : public ShadowedInk {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString systemName READ systemName WRITE setSystemName)
    Q_PROPERTY(QRectF symbolRect READ symbolRect WRITE setSymbolRect)
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(QFont font READ font WRITE setFont)
    /// Where the text's baseline begins.
    Q_PROPERTY(QPointF textOrigin READ textOrigin WRITE setTextOrigin)

public:
    using ShadowedInk::ShadowedInk;

    [[nodiscard]] QString systemName() const { return m_systemName; }
    void setSystemName(const QString& name);
    [[nodiscard]] QRectF symbolRect() const { return m_symbolRect; }
    void setSymbolRect(const QRectF& rect);
    [[nodiscard]] QString text() const { return m_text; }
    void setText(const QString& text);
    [[nodiscard]] QFont font() const { return m_font; }
    void setFont(const QFont& font);
    [[nodiscard]] QPointF textOrigin() const { return m_textOrigin; }
    void setTextOrigin(const QPointF& origin);

protected:
    void paintShape(QPainter& painter, double devicePixelRatio) const override;

private:
    QString m_systemName;
    QRectF m_symbolRect;
    QString m_text;
    QFont m_font;
    QPointF m_textOrigin;
};

} // namespace quorvin
