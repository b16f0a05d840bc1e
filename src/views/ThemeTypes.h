#pragma once

#include "theme/GeistFont.h"
#include "theme/ThemeLibrary.h"
#include "theme/ThemeManager.h"

#include <QFont>
#include <QJSEngine>
#include <QList>
#include <QtQml/qqml.h>

namespace quorvin {

/// The shared theme for QML: `ThemeManager.current.accent`.
struct ThemeManagerForQml {
    Q_GADGET
    QML_FOREIGN(quorvin::ThemeManager)
    QML_SINGLETON
    QML_NAMED_ELEMENT(ThemeManager)

public:
    static ThemeManager* create(QQmlEngine*, QJSEngine* engine) {
        QJSEngine::setObjectOwnership(&ThemeManager::shared(), QJSEngine::CppOwnership);
        Q_UNUSED(engine)
        return &ThemeManager::shared();
    }
};

/// The type of `ThemeManager.current`.
struct ThemeColorsForQml {
    Q_GADGET
    QML_FOREIGN(quorvin::ThemeColors)
    QML_ANONYMOUS
};

/// All themes for QML: `Themes.all`.
class Themes : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QList<quorvin::ThemeColors> all READ all CONSTANT)

public:
    [[nodiscard]] static QList<ThemeColors> all() {
        const auto& themes = ThemeLibrary::allThemes();
        return {themes.begin(), themes.end()};
    }
};

/// The typeface for QML: `font: Typeface.font(12, Font.Medium)`.
class Typeface : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// `size` is in points of the layout, which are pixels at a scale of 1.
    Q_INVOKABLE static QFont font(double size, int weight = QFont::Normal) {
        return GeistFont::font(size, static_cast<QFont::Weight>(weight));
    }
    /// The same with `tracking` points more between the letters.
    Q_INVOKABLE static QFont tracked(double size, double tracking, int weight = QFont::Normal) {
        QFont font = Typeface::font(size, weight);
        font.setLetterSpacing(QFont::AbsoluteSpacing, tracking);
        return font;
    }
};

} // namespace quorvin
