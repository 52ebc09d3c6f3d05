import QtQuick
import Corvane

// A row with a switch.
SettingsRow {
    id: row

    required property bool isOn
    property bool isAvailable: true

    signal switched(on: bool)

    ThemedSwitch {
        Accessible.name: row.title
        Accessible.description: row.subtitle
        enabled: row.isAvailable
        isOn: row.isOn
        onSwitched: on => row.switched(on)
    }
}
