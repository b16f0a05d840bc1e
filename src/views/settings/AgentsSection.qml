import QtQuick
import Quorvin

/// The agents that run, and what is sent to them.
SectionScaffold {
    id: section

    required property QtObject appState

    title: "Agents"
    subtitle: "AI agent integration and orchestration settings"

    SettingCard {
        label: "Detected Sessions"

        SettingRow {
            label: "Claude Code sessions"
            isDivided: true

            CountChip {
                objectName: "claudeCount"
                color: "#8b5cf6"
                count: section.appState.claudeSessionCount
            }
        }
        SettingRow {
            label: "OpenCode sessions"
            isDivided: true

            CountChip {
                objectName: "opencodeCount"
                color: "#10b981"
                count: section.appState.opencodeSessionCount
            }
        }
        SettingRow {
            label: "Refresh sessions"
            description: "Scan running terminals for active agent sessions"

            SettingsButton {
                objectName: "refreshSessionsButton"
                text: "Refresh"
                Accessible.description: "Refresh sessions"
                onClicked: section.appState.refreshSessions()
            }
        }
    }
    SettingCard {
        label: "Orchestrator"

        SettingToggleRow {
            objectName: "orchestratorRow"
            label: "Orchestrator Prefix"
            description: "Prepend ORCHESTRATOR CONTEXT to every message sent to Claude/OpenCode"
            divided: true
            value: section.appState.agentsIncluded
            onFlipped: on => section.appState.agentsIncluded = on
        }
        SettingRow {
            label: "Orchestrator Role"
            description: "Identifies you as the master orchestrator directing subagents"

            ValueText {
                objectName: "roleText"
                text: "Claude Opus"
            }
        }
    }
    SettingCard {
        label: "Send Behavior"

        SettingToggleRow {
            objectName: "appendRow"
            label: "Append Mode"
            description: "Join consecutive transcriptions instead of replacing draft"
            divided: true
            value: section.appState.appendMode
            onFlipped: on => section.appState.appendMode = on
        }
        SettingRow {
            label: "Session picker"
            description: "Shown automatically when multiple sessions are running"

            ValueText {
                objectName: "pickerText"
                text: "Enabled"
            }
        }
    }
    SettingCard {
        label: "Image Attachments"

        SettingRow {
            label: "Max images per send"

            ValueText {
                objectName: "imagesText"
                text: "18"
            }
        }
    }
}
