#pragma once

#include "theme/ThemeColors.h"

#include <QObject>
#include <QProperty>

namespace quorvin {

class UserDefaults;

/// The theme in use, for all views. Main thread only.
class ThemeManager final : public QObject {
    Q_OBJECT
    Q_PROPERTY(quorvin::ThemeColors current READ current NOTIFY currentChanged)

public:
    /// Starts with the theme that the settings name, or with the first one.
    explicit ThemeManager(UserDefaults& defaults);
    ~ThemeManager() override;

    /// The living instance. Whoever composes the program makes one before anything asks for it.
    [[nodiscard]] static ThemeManager& shared();

    [[nodiscard]] ThemeColors current() const { return m_current; }

    /// Takes the theme of that name, or the first one where there is none, and stores the name as
    /// it was given.
    Q_INVOKABLE void setTheme(const QString& name);

Q_SIGNALS:
    void currentChanged();

private:
    static inline ThemeManager* s_shared = nullptr;

    UserDefaults& m_defaults;
    Q_OBJECT_BINDABLE_PROPERTY(ThemeManager, ThemeColors, m_current, &ThemeManager::currentChanged)
};

} // namespace quorvin
