#pragma once

#include <QColor>
#include <QMetaType>
#include <QString>

namespace quorvin {

/// The colours of one theme, by what they are for.
struct ThemeColors {
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QColor bgBase MEMBER bgBase CONSTANT)
    Q_PROPERTY(QColor bgSurface MEMBER bgSurface CONSTANT)
    Q_PROPERTY(QColor bgOverlay MEMBER bgOverlay CONSTANT)
    Q_PROPERTY(QColor textPrimary MEMBER textPrimary CONSTANT)
    Q_PROPERTY(QColor textSecondary MEMBER textSecondary CONSTANT)
    Q_PROPERTY(QColor textMuted MEMBER textMuted CONSTANT)
    Q_PROPERTY(QColor accent MEMBER accent CONSTANT)
    Q_PROPERTY(QColor success MEMBER success CONSTANT)
    Q_PROPERTY(QColor recording MEMBER recording CONSTANT)
    Q_PROPERTY(QColor transcribing MEMBER transcribing CONSTANT)
    Q_PROPERTY(QColor border MEMBER border CONSTANT)
    Q_PROPERTY(QColor claude MEMBER claude CONSTANT)
    Q_PROPERTY(QColor opencode MEMBER opencode CONSTANT)
    Q_PROPERTY(QColor warning MEMBER warning CONSTANT)
    Q_PROPERTY(QColor error MEMBER error CONSTANT)
    /// Whether the platform's light appearance goes with it.
    Q_PROPERTY(bool usesLightAppearance READ usesLightAppearance CONSTANT)

public:
    [[nodiscard]] bool usesLightAppearance() const {
        return name == QLatin1String("latte"); // glacier is light, too, but deliberately not meant
    }
    bool operator==(const ThemeColors&) const = default;

    QString name;         ///< what the settings keep
    QColor bgBase;        ///< the window, under everything
    QColor bgSurface;     ///< cards and panels
    QColor bgOverlay;     ///< what is raised on a surface
    QColor textPrimary;   ///< main text
    QColor textSecondary; ///< supporting text
    QColor textMuted;     ///< captions, and what is disabled
    QColor accent;        ///< selection, focus, the default action
    QColor success;       ///< ready, granted
    QColor recording;     ///< a take runs
    QColor transcribing;  ///< the engine runs
    QColor border;        ///< hairlines, edges of cards
    QColor claude;        ///< everything about a Claude Code session
    QColor opencode;      ///< everything about an OpenCode session
    QColor warning;
    QColor error; ///< errors, and what destroys
};

} // namespace quorvin

Q_DECLARE_METATYPE(quorvin::ThemeColors)
