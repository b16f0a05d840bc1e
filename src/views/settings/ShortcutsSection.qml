import QtQuick
import Quorvin

/// What the keys do.
SectionScaffold {
    title: "Shortcuts"
    subtitle: "All keyboard shortcuts are global and fixed"

    SettingCard {
        label: "Global"

        ShortcutRow { label: "Toggle Compact Mode"; keys: "Ctrl + `"; divided: true }
        ShortcutRow { label: "Start Recording"; keys: "Click ring"; divided: true }
        ShortcutRow { label: "Stop Recording"; keys: "⌥ Space"; divided: true }
        ShortcutRow { label: "Cancel Recording"; keys: "Esc"; divided: true }
        ShortcutRow { label: "Send to Terminal"; keys: "⌘ →" }
    }
    SettingCard {
        label: "Compact Mode Only"

        ShortcutRow { label: "Delete Last Phrase"; keys: "← button"; divided: true }
        ShortcutRow { label: "Load Previous Phrase"; keys: "↑ button"; divided: true }
        ShortcutRow { label: "Attach Image"; keys: "📎 button" }
    }
    SettingCard {
        label: "Notes"

        InfoRow {
            icon: "info.circle"
            text: "Shortcuts cannot be customized in this version."
        }
        InfoRow {
            icon: "keyboard"
            text: "Global shortcuts work even when the app is in the background."
        }
        InfoRow {
            icon: "arrow.right.to.line"
            text: "⌘→ pastes the draft into the last focused terminal via Cmd+V → Enter."
        }
    }
}
