pragma Singleton

import QtQuick
import Quorvin

/// The colours of the theme, which fade into those of the next.
QtObject {
    property color bgBase: ThemeManager.current.bgBase
    property color bgSurface: ThemeManager.current.bgSurface
    property color bgOverlay: ThemeManager.current.bgOverlay
    property color textPrimary: ThemeManager.current.textPrimary
    property color textSecondary: ThemeManager.current.textSecondary
    property color textMuted: ThemeManager.current.textMuted
    property color accent: ThemeManager.current.accent
    property color success: ThemeManager.current.success
    property color recording: ThemeManager.current.recording
    property color transcribing: ThemeManager.current.transcribing
    property color border: ThemeManager.current.border

    Behavior on bgBase { ThemeFade {} }
    Behavior on bgSurface { ThemeFade {} }
    Behavior on bgOverlay { ThemeFade {} }
    Behavior on textPrimary { ThemeFade {} }
    Behavior on textSecondary { ThemeFade {} }
    Behavior on textMuted { ThemeFade {} }
    Behavior on accent { ThemeFade {} }
    Behavior on success { ThemeFade {} }
    Behavior on recording { ThemeFade {} }
    Behavior on transcribing { ThemeFade {} }
    Behavior on border { ThemeFade {} }
}
