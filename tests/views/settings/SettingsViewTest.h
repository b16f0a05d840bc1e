#pragma once

#include "views/settings/SettingsTabs.h"
#include "views/support/ViewTest.h"

#include <QAccessible>
#include <QRectF>

namespace quorvin::testing {

using Tab = SettingsTabs::SettingsTab;

/// The settings window over the whole program.
class SettingsViewTest : public ViewTest {
protected:
    /// Starts the program and shows a section.
    void open(Tab tab, QSize size = {960, 680});
    /// Of the program as it runs.
    void showSection(Tab tab, QSize size = {960, 680});
    void selectSection(Tab tab);

    [[nodiscard]] QVariant property(QQuickItem* item, const char* name) {
        return item->property(name);
    }
    [[nodiscard]] QString textOf(const QString& objectName) {
        return item(objectName)->property("text").toString();
    }
    [[nodiscard]] QColor colorOf(const QString& objectName) {
        return item(objectName)->property("color").value<QColor>();
    }
    /// In the scene, after the layout of what has changed.
    [[nodiscard]] QRectF placeOf(QQuickItem* item);
    [[nodiscard]] QRectF placeOf(const QString& objectName) { return placeOf(item(objectName)); }

    [[nodiscard]] QList<QQuickItem*> itemsIn(QQuickItem* ancestor, const QString& objectName);
    [[nodiscard]] QQuickItem* itemIn(QQuickItem* ancestor, const QString& objectName);
    /// The row with that label.
    [[nodiscard]] QQuickItem* row(const QString& label);
    [[nodiscard]] QString descriptionOf(const QString& label);
    /// The labels of all rows, card by card: "Window: Always on Top, UI Sounds".
    [[nodiscard]] QStringList cards();
    /// Whether each row of each card but the last is divided from the next, and the last isn't.
    void expectDividedRows();

    /// The control in the row with that label.
    [[nodiscard]] QQuickItem* control(const QString& label, const QString& objectName) {
        return itemIn(row(label), objectName);
    }
    /// Scrolls to it and clicks it.
    void clickOn(QQuickItem* item);
    void clickOn(const QString& objectName) { clickOn(item(objectName)); }
    /// Opens a picker and clicks the entry with that text.
    void choose(QQuickItem* picker, const QString& text);
    /// The texts of an opened picker.
    [[nodiscard]] QStringList entriesOf(QQuickItem* picker);
    /// Presses a key often with the focus on a control.
    void press(QQuickItem* control, Qt::Key key, int times = 1);

    [[nodiscard]] static QAccessibleInterface* accessible(QQuickItem* item) {
        return QAccessible::queryAccessibleInterface(item);
    }
};

[[nodiscard]] QColor withAlpha(QColor color, double alpha);
void expectColor(const QColor& actual, const QColor& expected);

} // namespace quorvin::testing
