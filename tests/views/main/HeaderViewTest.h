#pragma once

#include "UpdateState.h"
#include "views/support/ViewTest.h"

#include <QAccessible>
#include <QColor>

namespace quorvin::testing {

/// The header's views, with what their tests ask of items by name.
class HeaderViewTest : public ViewTest {
protected:
    ~HeaderViewTest() override {
        close(); // before what its views are bound to
    }

    [[nodiscard]] QVariant property(const QString& objectName, const char* name) {
        return item(objectName)->property(name);
    }
    [[nodiscard]] QString text(const QString& objectName) {
        return property(objectName, "text").toString();
    }
    [[nodiscard]] QColor colorOf(const QString& objectName, const char* name = "color") {
        return property(objectName, name).value<QColor>();
    }
    [[nodiscard]] QColor borderOf(const QString& objectName) {
        return property(objectName, "border").value<QObject*>()->property("color").value<QColor>();
    }
    /// In the scene, after the layout of what has changed.
    [[nodiscard]] QRectF placeOf(const QString& objectName) {
        (void)grab();
        QQuickItem* const found = item(objectName);
        return found->mapRectToScene(QRectF({0, 0}, found->size()));
    }
    [[nodiscard]] QAccessibleInterface* accessible(const QString& objectName) {
        return QAccessible::queryAccessibleInterface(item(objectName));
    }
    void pressByAssistant(const QString& objectName) {
        accessible(objectName)
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
    }

    /// For views of updates alone.
    UpdateState updates;
    [[nodiscard]] QVariantMap updateState() {
        return {{QStringLiteral("appState"), QVariant::fromValue<QObject*>(&updates)}};
    }
};

inline QColor withAlpha(QColor color, double alpha) {
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

inline void expectColor(const QColor& actual, const QColor& expected) {
    constexpr double tolerance = 0.003;
    EXPECT_NEAR(actual.redF(), expected.redF(), tolerance);
    EXPECT_NEAR(actual.greenF(), expected.greenF(), tolerance);
    EXPECT_NEAR(actual.blueF(), expected.blueF(), tolerance);
    EXPECT_NEAR(actual.alphaF(), expected.alphaF(), tolerance);
}

} // namespace quorvin::testing
