#pragma once

#include "views/settings/SettingsTabs.h"
#include "views/support/ViewTest.h"

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
};

} // namespace quorvin::testing
