import QtQuick
import Corvane

// What a card shows and offers while its workspace runs.
Flow {
    id: controls

    required property WorkspaceCardData card
    // On one line.
    readonly property real naturalWidth: {
        let sum = 0;
        for (const item of [pill, status, finish, save])
            sum += item.visible ? item.implicitWidth + spacing : 0;
        return sum - spacing;
    }

    spacing: Theme.spacingL

    Item {
        id: pill

        implicitWidth: mark.implicitWidth
        implicitHeight: 32

        RunningPill {
            id: mark

            anchors.verticalCenter: parent.verticalCenter
        }
    }
    BodyText {
        id: status

        height: 32
        verticalAlignment: Text.AlignVCenter
        text: controls.card.statusText
        color: Theme.secondaryLabel
    }
    ActionButton {
        id: finish

        focus: true
        enabled: !controls.card.isLoading
        isProminent: true
        tint: Theme.redFill
        isBusy: controls.card.isLoading
        symbol: "power"
        text: "Finish"
        Accessible.description: controls.card.name
        onClicked: controls.card.workspaces.requestFinish(controls.card.workspaceId)
    }
    ActionButton {
        id: save

        visible: controls.card.canSaveLayout
        symbol: "rectangle.dock"
        text: "Save Layout"
        tooltip: "Save current window layout for this workspace (only available when workspace is running)"
        onClicked: controls.card.workspaces.saveLayout(controls.card.workspaceId)
    }
}
