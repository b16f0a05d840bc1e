#pragma once

#include "theme/ThemeManager.h"
#include "unit/models/AppStateFixture.h"
#include "views/support/AnimationClock.h"

#include <QAccessible>
#include <QImage>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QVariantMap>

#include <chrono>
#include <memory>

namespace quorvin::testing {

/// Views in a window, over the whole program on fake platform parts, with a user who clicks and
/// types.
///
///     using HeaderBar = ViewTest;
///
///     TEST_F(HeaderBar, OpensTheFeed) {
///         start();
///         show(u"HeaderBar { width: 580 }"_s, appState());
///         click(u"activityLogButton"_s);         // by objectName
///         advance(250ms);                        // animations, QML timers and the program's tasks
///         EXPECT_TRUE(app().showActivityLog());
///         EXPECT_EQ(color({10, 10}), QColor(u"#111111"_s));
///     }
///
/// Put the file into a quorvin_view_test(NAME ... SOURCES ...). Time stands still but for
/// `advance`. What QML warns of fails the test.
class ViewTest : public AppStateTest {
public:
    ~ViewTest() override;

protected:
    ViewTest();

    /// Shows a piece of QML in a window of its size; a window shows itself. QtQuick and Quorvin are
    /// imported.
    void show(const QString& qml, const QVariantMap& properties = {});
    /// For the views that require the program's state, after `start`.
    [[nodiscard]] QVariantMap appState();
    void close();

    [[nodiscard]] QQuickWindow& window() { return *m_window; }
    /// What `show` made, if it's an item.
    [[nodiscard]] QQuickItem* root() { return qobject_cast<QQuickItem*>(m_root.get()); }
    /// The first item with that objectName, popups included. Fails the test if there is none.
    [[nodiscard]] QQuickItem* item(const QString& objectName);
    [[nodiscard]] QList<QQuickItem*> items(const QString& objectName);
    /// Those with that objectName below an item, and the first of them, which the test fails
    /// without.
    [[nodiscard]] QList<QQuickItem*> itemsIn(QQuickItem* ancestor, const QString& objectName);
    [[nodiscard]] QQuickItem* itemIn(QQuickItem* ancestor, const QString& objectName);

    // Of the first item with that objectName.
    [[nodiscard]] QVariant propertyOf(const QString& objectName, const char* name) {
        return item(objectName)->property(name);
    }
    [[nodiscard]] QString textOf(const QString& objectName) {
        return propertyOf(objectName, "text").toString();
    }
    [[nodiscard]] QColor colorOf(const QString& objectName, const char* name = "color") {
        return colorOf(item(objectName), name);
    }
    [[nodiscard]] static QColor colorOf(const QQuickItem* item, const char* name = "color") {
        return item->property(name).value<QColor>();
    }
    /// Of a Rectangle.
    [[nodiscard]] static QColor borderColor(const QQuickItem* rectangle);
    /// In the scene, after the layout of what has changed; of a Text, where it writes.
    [[nodiscard]] QRectF frameOf(QQuickItem* item);
    [[nodiscard]] QRectF frameOf(const QString& objectName) { return frameOf(item(objectName)); }

    /// What assistive tools see of it, and what they do to press it.
    [[nodiscard]] static QAccessibleInterface* accessible(QQuickItem* item) {
        return QAccessible::queryAccessibleInterface(item);
    }
    static void pressByAssistant(QQuickItem* item);

    /// Lets animations, QML's timers and the program's tasks go on.
    void advance(std::chrono::milliseconds duration);

    // In the middle of an item, or somewhere in the window.
    void click(const QString& objectName) { clickAt(middleOf(objectName)); }
    void clickAt(QPoint position);
    void hover(const QString& objectName);
    void hoverAt(QPoint position);
    /// The pointer leaves the window.
    void leave();
    /// With the left button, in steps.
    void drag(QPoint from, QPoint to);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void type(const QString& text);

    [[nodiscard]] QPoint middleOf(const QString& objectName);
    [[nodiscard]] QPoint middleOf(QQuickItem* item);

    /// What the window shows now, a pixel for each point.
    [[nodiscard]] QImage grab() { return m_window->grabWindow(); }
    [[nodiscard]] QColor color(QPoint position) { return grab().pixelColor(position); }

    ThemeManager theme{defaults};

private:
    AnimationClock m_clock;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_ownWindow; // for what is no window itself
    std::unique_ptr<QObject> m_root;
    QQuickWindow* m_window = nullptr;
};

[[nodiscard]] QColor withAlpha(QColor color, double alpha);
/// The same but for rounding.
void expectColor(const QColor& actual, const QColor& expected);

} // namespace quorvin::testing
