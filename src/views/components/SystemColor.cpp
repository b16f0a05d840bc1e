#include "views/components/SystemColor.h"

#include "theme/ThemeManager.h"

namespace quorvin {

SystemColor::SystemColor(QObject* parent) : QObject(parent) {
    connect(&ThemeManager::shared(), &ThemeManager::currentChanged, this,
            &SystemColor::appearanceChanged);
}

QColor SystemColor::orange() const {
    return ThemeManager::shared().current().usesLightAppearance() ? QColor(255, 149, 0)
                                                                  : QColor(255, 159, 10);
}

} // namespace quorvin
