import QtQuick

/// How a colour changes with the theme.
ColorAnimation {
    duration: 400
    easing.type: Easing.InOutQuad
}
