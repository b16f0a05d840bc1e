#pragma once

#include <QFont>
#include <QQuickTextDocument>
#include <QSyntaxHighlighter>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// Gives all digits of an editor the same room, whatever is typed:
///
///     TextEdit { id: edit; MonospacedDigits { document: edit.textDocument; font: edit.font } }
///
/// For a label take a DigitText.
class MonospacedDigits : public QSyntaxHighlighter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument* document READ textDocument WRITE setTextDocument NOTIFY
                   textDocumentChanged)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)

public:
    explicit MonospacedDigits(QObject* parent = nullptr);

    [[nodiscard]] QQuickTextDocument* textDocument() const { return m_textDocument; }
    void setTextDocument(QQuickTextDocument* document);
    [[nodiscard]] QFont font() const { return m_font; }
    void setFont(const QFont& font);

Q_SIGNALS:
    void textDocumentChanged();
    void fontChanged();

protected:
    void highlightBlock(const QString& text) override;

private:
    QQuickTextDocument* m_textDocument = nullptr;
    QFont m_font;
};

} // namespace quorvin
