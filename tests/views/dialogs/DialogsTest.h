#pragma once

#include "views/support/ViewTest.h"

#include <QAccessible>

namespace quorvin::testing {

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
    /// Starts an agent in a terminal of its own, in the directory "project<pid>".
    void runAgent(const QString& name, ProcessID pid);
    /// Sends a draft to that many sessions of Claude Code, so that the picker opens.
    void openPicker(int sessions);

    /// Until a dialog has come or gone.
    void settle();
    /// Also while it fades.
    [[nodiscard]] bool isSheetShown() { return !items(QStringLiteral("sheetContent")).isEmpty(); }

    [[nodiscard]] QVariant propertyOf(const QString& objectName, const char* name) {
        return item(objectName)->property(name);
    }
    [[nodiscard]] QString textOf(const QString& objectName) {
        return propertyOf(objectName, "text").toString();
    }
    [[nodiscard]] static QColor borderColor(const QQuickItem* rectangle);
    [[nodiscard]] QRectF frameOf(const QString& objectName);
    /// The items with that name in this one.
    [[nodiscard]] QList<QQuickItem*> itemsIn(QQuickItem* ancestor, const QString& objectName);
    [[nodiscard]] static QAccessibleInterface* accessible(QQuickItem* item) {
        return QAccessible::queryAccessibleInterface(item);
    }
    void clickIn(QQuickItem* ancestor, const QString& objectName);

    static void expectColor(const QColor& actual, const QColor& expected);
    [[nodiscard]] static QColor withAlpha(QColor color, double alpha);
};

} // namespace quorvin::testing
