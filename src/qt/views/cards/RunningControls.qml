import QtQuick
import Corvane

// What a card shows and offers while its workspace runs.
Row {
    id: controls

    required property Item card

    spacing: 12

    RunningPill {
        anchors.verticalCenter: parent.verticalCenter
    }
    BodyText {
        anchors.verticalCenter: parent.verticalCenter
        text: controls.card.statusText
        color: Theme.secondaryLabel
    }
    ActionButton {
        focus: true
        enabled: !controls.card.isLoading
        isProminent: true
        tint: Theme.redFill
        isBusy: controls.card.isLoading
        symbol: "power"
        text: "Finish"
        Accessible.description: controls.card.name
        onClicked: controls.card.workspaces.requestFinish(controls.card.index)
    }
    ActionButton {
        visible: controls.card.canSaveLayout
        symbol: "rectangle.dock"
        text: "Save Layout"
        tooltip: "Save current window layout for this workspace (only available when workspace is running)"
        onClicked: Qt.callLater(controls.card.workspaces.saveLayout, controls.card.index)
    }
}
