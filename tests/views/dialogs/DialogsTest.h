#pragma once

#include "views/support/ViewTest.h"

#include <QColor>

namespace quorvin::testing {

/// The colours of Claude Code and of OpenCode.
inline const QColor purple(0x8b, 0x5c, 0xf6);
inline const QColor green(0x10, 0xb9, 0x81);

/// A dialog over an empty window as large as the main one is at least.
class DialogsTest : public ViewTest {
protected:
    /// Shows `qml` with `app` for the program's state, if need be after `start`.
    void showOverWindow(const QString& qml);

    /// Shows the window of the program, after `start`, as if it had been set up.
    void showMainWindow();

    /// Puts a text into the history, a minute after the one before.
    void remember(const QString& text, const QString& sentTo = {}, double duration = 4.2,
                  const QString& language = QStringLiteral("en"));
    /// Sends a draft to that many sessions of Claude Code, so that the picker opens.
    void openPicker(int sessions);

    /// Until a dialog has come or gone.
    void settle();
    /// Also while it fades.
    [[nodiscard]] bool isSheetShown() { return !items(QStringLiteral("sheetContent")).isEmpty(); }

    void clickIn(QQuickItem* ancestor, const QString& objectName);
};

} // namespace quorvin::testing
