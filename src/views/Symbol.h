#pragma once

#include <QColor>
#include <QImage>
#include <QQuickPaintedItem>

namespace quorvin {

/// A symbol of the icon set in one colour.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name MEMBER m_name WRITE setName NOTIFY nameChanged)
    /// The side of the square that the symbol asks for, in points.
    Q_PROPERTY(double size READ implicitWidth WRITE setSize NOTIFY implicitWidthChanged)
    Q_PROPERTY(QColor color MEMBER m_color WRITE setColor NOTIFY colorChanged)

public:
    explicit Symbol(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

    void setName(const QString& name);
    void setSize(double size) { setImplicitSize(size, size); }
    void setColor(const QColor& color);

Q_SIGNALS:
    void nameChanged();
    void colorChanged();

private:
    QString m_name;
    QColor m_color = Qt::white;
};

} // namespace quorvin
