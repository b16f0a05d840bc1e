import QtQuick
import QtQuick.Controls
import Quorvin

/// A window on the theme's ground. Controls that don't colour themselves take the light or the dark
/// appearance that goes with the theme.
ApplicationWindow {
    id: window

    readonly property bool isLight: ThemeManager.current.usesLightAppearance

    color: Look.bgBase
    palette {
        window: isLight ? "#ececec" : "#1e1e1e"
        windowText: isLight ? "#1d1d1f" : "#f2f2f2"
        base: isLight ? "#ffffff" : "#171717"
        alternateBase: isLight ? "#f4f5f5" : "#232323"
        text: isLight ? "#1d1d1f" : "#f2f2f2"
        placeholderText: isLight ? "#8a8a8e" : "#7c7c80"
        button: isLight ? "#ffffff" : "#3a3a3c"
        buttonText: isLight ? "#1d1d1f" : "#f2f2f2"
        light: isLight ? "#ffffff" : "#4a4a4c"
        midlight: isLight ? "#f4f5f5" : "#3f3f41"
        mid: isLight ? "#c6c6c8" : "#38383a"
        dark: isLight ? "#9a9a9e" : "#101010"
        toolTipBase: isLight ? "#f6f6f6" : "#2c2c2e"
        toolTipText: isLight ? "#1d1d1f" : "#f2f2f2"
        highlight: Look.accent
        highlightedText: Look.bgBase
    }
}
