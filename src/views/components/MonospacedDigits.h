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
/// A digit stands in the middle of its room, but for one at the beginning of a line, which stands
/// at its left. For a label take a DigitText.
class MonospacedDigits : public QSyntaxHighlighter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument* document READ textDocument WRITE setTextDocument NOTIFY
                   textDocumentChanged)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)
    /// For a document of one line that is indented by `indent`: so the first digit, too, stands in
    /// the middle.
    Q_PROPERTY(bool isIndented MEMBER m_isIndented)

public:
    explicit MonospacedDigits(QObject* parent = nullptr);

    [[nodiscard]] QQuickTextDocument* textDocument() const { return m_textDocument; }
    void setTextDocument(QQuickTextDocument* document);
    [[nodiscard]] QFont font() const { return m_font; }
    void setFont(const QFont& font);

    /// The room to the left of a digit that the text begins with.
    Q_INVOKABLE static double indent(const QString& text, const QFont& font);

Q_SIGNALS:
    void textDocumentChanged();
    void fontChanged();

protected:
    void highlightBlock(const QString& text) override;

private:
    QQuickTextDocument* m_textDocument = nullptr;
    QFont m_font;
    bool m_isIndented = false;
};

} // namespace quorvin
