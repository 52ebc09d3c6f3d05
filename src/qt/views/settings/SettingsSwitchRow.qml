import QtQuick
import Corvane

// A row with a switch.
SettingsRow {
    id: row

    required property SwitchModel preference
    property bool isAvailable: true

    ThemedSwitch {
        Accessible.name: row.title
        Accessible.description: row.subtitle
        enabled: row.isAvailable
        isOn: row.preference.isOn
        onSwitched: on => row.preference.isOn = on
    }
}
