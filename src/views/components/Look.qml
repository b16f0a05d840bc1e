pragma Singleton

import QtQuick
import Quorvin

/// The colours of the theme by the names of the first window, and its distances. A change of theme
/// fades.
QtObject {
    property color background: ThemeManager.current.bgBase
    property color surface: ThemeManager.current.bgSurface
    property color border: ThemeManager.current.border
    property color text: ThemeManager.current.textPrimary
    property color secondaryText: ThemeManager.current.textSecondary
    property color accent: ThemeManager.current.accent
    property color recording: ThemeManager.current.recording
    property color transcribing: ThemeManager.current.transcribing
    readonly property int spacing: 12
    readonly property int radius: 10

    Behavior on background { ThemeFade {} }
    Behavior on surface { ThemeFade {} }
    Behavior on border { ThemeFade {} }
    Behavior on text { ThemeFade {} }
    Behavior on secondaryText { ThemeFade {} }
    Behavior on accent { ThemeFade {} }
    Behavior on recording { ThemeFade {} }
    Behavior on transcribing { ThemeFade {} }
}
