import QtQuick
import Corvane

// The sections of the settings, in their order.
Column {
    id: sections

    required property SettingsModel settings

    spacing: Theme.sheetPadding

    UnifiedSettingsSection {
        title: "Workspace Management"
        icon: "square.grid.2x2"

        SettingsSwitchRow {
            icon: "scope"
            title: "Focus Mode"
            subtitle: "Quit unrelated apps when launching a workspace"
            preference: sections.settings.focusMode
        }
        SettingsSwitchRow {
            icon: "rectangle.on.rectangle"
            title: "Window Layout Features"
            subtitle: "Enable saving and restoring window positions (requires Accessibility permission)"
            preference: sections.settings.accessibilityFeatures
        }
        SettingsSwitchRow {
            icon: "square.and.arrow.down.on.square"
            iconColor: preference.isOn ? Theme.green : Theme.secondaryLabel
            title: "Auto-Save Layouts"
            titleColor: sections.settings.accessibilityFeatures.isOn ? Theme.label : Theme.secondaryLabel
            subtitle: sections.settings.autoSaveSubtitle
            isAvailable: sections.settings.accessibilityFeatures.isOn
            preference: sections.settings.autoSaveLayouts
        }
        SettingsRow {
            icon: "rectangle.expand.vertical"
            title: "Fullscreen Priority"
            subtitle: "Which app gets fullscreen when multiple apps are saved as fullscreen (macOS limitation)"

            ThemedPicker {
                width: 120
                Accessible.name: "Fullscreen Priority"
                titles: ["First App", "Last App"]
                values: ["first", "last"]
                value: sections.settings.fullscreenPriority
                onPicked: value => sections.settings.fullscreenPriority = value
            }
        }
        SettingsNote {
            icon: "info.circle"
            tint: Theme.blue
            text: "macOS only allows one app to be fullscreen at a time. If multiple apps in your workspace are saved as fullscreen, only one will be fullscreen and others will be maximized."
        }
        SettingsRow {
            icon: "desktopcomputer"
            title: "This Desktop"
            subtitle: sections.settings.desktopLine
        }
        SettingsNote {
            visible: !sections.settings.accessibilityFeatures.isOn
            icon: "exclamationmark.triangle"
            tint: Theme.orange
            text: "Window Layout Features are currently disabled. You can still use all core workspace functionality, but window positions won't be saved or restored automatically."
        }
    }
    UnifiedSettingsSection {
        title: "Confirmation Dialogs"
        icon: "exclamationmark.bubble"

        BodyText {
            width: parent.width
            text: "Control which confirmation messages are shown. Disable popups you don't need to see repeatedly."
            wrapMode: Text.Wrap
            color: Theme.secondaryLabel
        }
        SettingsSwitchRow {
            icon: "checkmark.circle"
            title: "Window Layout Saved"
            subtitle: "Show confirmation when saving window layouts"
            preference: sections.settings.showLayoutSavedAlert
        }
        SettingsSwitchRow {
            icon: "xmark.circle"
            title: "Workspace Applications Closed"
            subtitle: "Show summary when finishing a workspace"
            preference: sections.settings.showWorkspaceClosedAlert
        }
        SettingsSwitchRow {
            icon: "exclamationmark.triangle"
            title: "Window Layouts Disabled"
            subtitle: "Show warning when accessibility features are disabled"
            preference: sections.settings.showLayoutsDisabledAlert
        }
        SettingsSwitchRow {
            icon: "app.badge.checkmark"
            title: "Applications Closed (Focus Mode)"
            subtitle: "Show summary when focus mode closes apps"
            preference: sections.settings.showApplicationsClosedAlert
        }
        UnifiedSettingsButton {
            symbol: "arrow.clockwise"
            title: "Reset All Confirmations"
            subtitle: "Re-enable all confirmation dialogs"
            onClicked: sections.settings.resetConfirmations()
        }
    }
    UnifiedSettingsSection {
        title: "Data Management"
        icon: "externaldrive"

        UnifiedSettingsButton {
            symbol: "square.and.arrow.down"
            title: "Import Workspaces"
            subtitle: "Load workspaces from JSON file"
            onClicked: sections.settings.importWorkspaces()
        }
        UnifiedSettingsButton {
            symbol: "clock"
            title: "Import a Kept Copy"
            subtitle: "Copies are kept before workspaces are replaced or deleted"
            onClicked: Qt.callLater(sections.settings.importKeptCopy)
        }
        UnifiedSettingsButton {
            symbol: "square.and.arrow.up"
            title: "Export Workspaces"
            subtitle: "Save workspaces to JSON file"
            onClicked: sections.settings.exportWorkspaces()
        }
    }
    UnifiedSettingsSection {
        title: "Advanced"
        icon: "wrench.and.screwdriver"

        UnifiedSettingsButton {
            symbol: "arrow.clockwise"
            title: "Reset Preferences"
            subtitle: "Reset all app settings to defaults"
            isDestructive: true
            onClicked: sections.settings.resetPreferences()
        }
    }
    UnifiedSettingsSection {
        title: "About Corvane"
        icon: "info.circle"

        SettingsRow {
            icon: "app.badge"
            title: "Version"
            subtitle: sections.settings.versionLine
        }
        UnifiedSettingsButton {
            symbol: "envelope"
            title: "Contact Support"
            subtitle: sections.settings.supportAddress
            onClicked: sections.settings.contactSupport()
        }
    }
}
