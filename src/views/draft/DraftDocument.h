#pragma once

#include <QObject>
#include <QPointer>
#include <QQmlParserStatus>
#include <QQuickTextDocument>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// Keeps an editor and the draft the same, whoever changes them:
///
///     DraftDocument { document: area.textDocument; draft: appState.draftText
///                     onEdited: text => appState.draftText = text }
///
/// The editor's own text won't do: it has ordinary blanks for those that don't break lines, so the
/// draft would change without the user's doing, and a new one could not be undone.
class DraftDocument : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    /// The editor's, for good.
    Q_PROPERTY(QQuickTextDocument* document READ document WRITE setDocument NOTIFY documentChanged)
    Q_PROPERTY(QString draft READ draft WRITE setDraft NOTIFY draftChanged)
    /// As a reader counts them.
    Q_PROPERTY(int characterCount READ characterCount NOTIFY draftChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickTextDocument* document() const { return m_document; }
    void setDocument(QQuickTextDocument* document);
    [[nodiscard]] QString draft() const { return m_draft; }
    /// Changes the editor's text in one step, which can be undone; the first draft can't.
    void setDraft(const QString& draft);
    [[nodiscard]] int characterCount() const;

    void classBegin() override {}
    void componentComplete() override;

Q_SIGNALS:
    void documentChanged();
    void draftChanged();
    /// By the user.
    void edited(const QString& text);
    /// By others.
    void replaced();

private:
    void replaceText();
    void alignParagraphs();
    void takeEdit();

    QPointer<QQuickTextDocument> m_document;
    QString m_draft;
    QString m_shown; ///< the editor's own text, which may have other line ends than the draft
    bool m_isFollowing = false; ///< complete, and there is an editor
    bool m_isReplacing = false;
};

} // namespace quorvin
