#include "views/components/MonospacedDigits.h"

#include "theme/MonospacedDigits.h"

namespace quorvin {

MonospacedDigits::MonospacedDigits(QObject* parent) : QSyntaxHighlighter(parent) {}

void MonospacedDigits::setTextDocument(QQuickTextDocument* document) {
    if (document != m_textDocument) {
        m_textDocument = document;
        setDocument(document ? document->textDocument() : nullptr);
        rehighlight();
        Q_EMIT textDocumentChanged();
    }
}

void MonospacedDigits::setFont(const QFont& font) {
    if (font != m_font) {
        m_font = font;
        rehighlight();
        Q_EMIT fontChanged();
    }
}

double MonospacedDigits::indent(const QString& text, const QFont& font) {
    return monospacedIndent(text, font);
}

void MonospacedDigits::highlightBlock(const QString& text) {
    for (QTextLayout::FormatRange& range : monospacedDigits(text, m_font)) {
        if (range.start == 0 && !m_isIndented) {
            range.format.setFontLetterSpacing(range.format.fontLetterSpacing() +
                                              monospacedIndent(text, m_font));
        }
        setFormat(range.start, range.length, range.format);
    }
}

} // namespace quorvin
