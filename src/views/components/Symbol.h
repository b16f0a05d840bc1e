#pragma once

#include "views/components/DrawnItem.h"

#include <QColor>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// A symbol of the icon set in one colour, by default in a square that leaves some air around it:
///
///     Symbol { name: "paperclip"; size: 14; color: ThemeManager.current.accent }
class Symbol : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    /// Of the drawing itself, in points, as of a text that it stands beside.
    Q_PROPERTY(double size READ size WRITE setSize NOTIFY sizeChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    explicit Symbol(QQuickItem* parent = nullptr);

    [[nodiscard]] QString name() const { return m_name; }
    void setName(const QString& name);
    [[nodiscard]] double size() const { return m_size; }
    void setSize(double size);
    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(const QColor& color);

Q_SIGNALS:
    void nameChanged();
    void sizeChanged();
    void colorChanged();

protected:
    [[nodiscard]] PlacedImage drawn(double devicePixelRatio) const override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

private:
    QString m_name;
    double m_size = 0;
    QColor m_color = Qt::white;
};

} // namespace quorvin
