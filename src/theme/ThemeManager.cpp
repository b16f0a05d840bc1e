#include "theme/ThemeManager.h"

#include "platform/UserDefaults.h"
#include "theme/ThemeLibrary.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

const QString selectedThemeKey = u"selectedTheme"_s;

const ThemeColors& themeNamed(const QString& name) {
    const auto& themes = ThemeLibrary::allThemes();
    const auto* const found = std::find_if(
        themes.begin(), themes.end(), [&](const ThemeColors& theme) { return theme.name == name; });
    return found == themes.end() ? ThemeLibrary::razer() : *found;
}

} // namespace

ThemeManager::ThemeManager(UserDefaults& defaults) : m_defaults(defaults) {
    m_current = themeNamed(defaults.string(selectedThemeKey).value_or(u"razer"_s));
    s_shared = this;
}

ThemeManager::~ThemeManager() {
    if (s_shared == this) {
        s_shared = nullptr;
    }
}

ThemeManager& ThemeManager::shared() {
    Q_ASSERT(s_shared);
    return *s_shared;
}

void ThemeManager::setTheme(const QString& name) {
    m_current = themeNamed(name);
    m_defaults.setString(selectedThemeKey, name);
}

} // namespace quorvin
