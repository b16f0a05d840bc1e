#pragma once

#include "DialogsTest.h"
#include "theme/HexColor.h"

namespace quorvin::testing {

/// The history over an empty window.
class HistoryTest : public DialogsTest {
protected:
    void showDialog() {
        showOverWindow(QStringLiteral("HistoryDialog { appState: window.appState;"
                                      "isPresented: window.appState.showHistory;"
                                      "onDismissed: window.appState.showHistory = false }"));
    }
    void open() {
        app().setShowHistory(true);
        settle();
    }
    /// With these texts in the history, the last one on top.
    void openWith(const QStringList& texts) {
        start();
        for (const QString& text : texts) {
            remember(text);
        }
        showDialog();
        open();
    }
    /// The row with that text.
    QQuickItem* row(const QString& text) {
        for (QQuickItem* candidate : items(QStringLiteral("historyRow"))) {
            if (candidate->property("text").toString() == text) {
                return candidate;
            }
        }
        ADD_FAILURE() << "no row " << text.toStdString();
        return nullptr;
    }
    QQuickItem* part(QQuickItem* row, const QString& name) { return itemsIn(row, name).value(0); }

    const QColor orange = hexColor(u"f97316");
};

} // namespace quorvin::testing
