#pragma once

#include "views/support/ViewTest.h"

namespace quorvin::testing {

/// The draft panel as wide as the least window has it, under a button that a test can tab away to.
class DraftViewTest : public ViewTest {
protected:
    void showPanel();

    QQuickItem* editor() { return item(QStringLiteral("draftText")); }
    void setEditorFocus();
    /// The panel, and the keys go to the editor.
    void showEditor();
    [[nodiscard]] QString selection() { return editor()->property("selectedText").toString(); }
    [[nodiscard]] QString shownText() { return editor()->property("text").toString(); }

    /// Writes that many pictures of 40 by 40 pixels in one colour and gives their addresses.
    QList<QUrl> pictures(int count, const QColor& color = Qt::red);
    /// Pictures that a picker, which has to be open, gives.
    void pickImages(const QList<QUrl>& images);
    /// Until the pictures that are attached are shown.
    void finishReading();
};

} // namespace quorvin::testing
