#include "views/draft/DraftDocument.h"

#include "support/Text.h"

#include <QScopedValueRollback>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace quorvin {

namespace {

QString plainText(const QTextDocument& document) {
    QString text = document.toRawText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    text.replace(QChar::LineSeparator, u'\n');
    return text;
}

/// That of the first letter which has one.
Qt::LayoutDirection direction(const QString& paragraph) {
    for (qsizetype i = 0; i < paragraph.size(); ++i) {
        char32_t letter = paragraph[i].unicode();
        if (QChar::isHighSurrogate(letter) && i + 1 < paragraph.size()) {
            letter = QChar::surrogateToUcs4(paragraph[i], paragraph[i + 1]);
            ++i;
        }
        switch (QChar::direction(letter)) {
        case QChar::DirL:
            return Qt::LeftToRight;
        case QChar::DirR:
        case QChar::DirAL:
            return Qt::RightToLeft;
        default:
            break;
        }
    }
    return Qt::LayoutDirectionAuto;
}

} // namespace

void DraftDocument::setDocument(QQuickTextDocument* document) {
    if (document != m_document) {
        m_document = document;
        Q_EMIT documentChanged();
    }
}

void DraftDocument::setDraft(const QString& draft) {
    if (draft == m_draft) {
        return;
    }
    m_draft = draft;
    if (m_isFollowing) {
        replaceText();
    }
    Q_EMIT draftChanged();
}

int DraftDocument::characterCount() const {
    return static_cast<int>(text::characterCount(m_draft));
}

void DraftDocument::componentComplete() {
    if (!m_document) {
        return;
    }
    m_isFollowing = true;
    replaceText();
    QTextDocument* const document = m_document->textDocument();
    document->clearUndoRedoStacks();
    connect(document, &QTextDocument::contentsChanged, this, &DraftDocument::takeEdit);
}

void DraftDocument::replaceText() {
    if (!m_document) {
        return; // the editor has gone
    }
    {
        const QScopedValueRollback<bool> replacing(m_isReplacing, true);
        QTextCursor cursor(m_document->textDocument());
        // The steps to undo keep what they have removed: that need not be a whole draft for each
        // take that is added to it.
        const bool isAdded = !m_shown.isEmpty() && m_draft.startsWith(m_shown);
        cursor.beginEditBlock(); // a step of its own, also after typing
        if (isAdded) {
            cursor.movePosition(QTextCursor::End);
        } else {
            cursor.select(QTextCursor::Document);
        }
        cursor.insertText(isAdded ? m_draft.sliced(m_shown.size()) : m_draft);
        cursor.endEditBlock();
        alignParagraphs();
    }
    m_shown = plainText(*m_document->textDocument());
    Q_EMIT replaced();
}

/// An editor has one direction for all. Here each paragraph has that of its first letter, if it has
/// one.
void DraftDocument::alignParagraphs() {
    QTextDocument* const document = m_document->textDocument();
    if (document->isRedoAvailable()) {
        return; // the directions come back by undo and redo, too
    }
    const QScopedValueRollback<bool> replacing(m_isReplacing, true);
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        const Qt::LayoutDirection own = direction(block.text());
        const bool isAligned = own == Qt::LayoutDirectionAuto
                                   ? block.blockFormat().layoutDirection() == own
                                   : block.textDirection() == own;
        if (isAligned) {
            continue;
        }
        QTextBlockFormat format;
        format.setLayoutDirection(own);
        QTextCursor cursor(block);
        cursor.joinPreviousEditBlock(); // undone together with what has made it necessary
        cursor.mergeBlockFormat(format);
        cursor.endEditBlock();
    }
}

void DraftDocument::takeEdit() {
    if (m_isReplacing) {
        return;
    }
    alignParagraphs();
    const QString text = plainText(*m_document->textDocument());
    if (text == m_shown) {
        return; // only its looks have changed
    }
    m_shown = text;
    m_draft = text;
    Q_EMIT draftChanged();
    Q_EMIT edited(text);
}

} // namespace quorvin
