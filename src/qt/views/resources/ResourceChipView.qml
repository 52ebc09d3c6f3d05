import QtQuick
import Corvane

// One resource: a press launches it, or stops it while it runs. Where there is none for it, it is
// kept for the next workspace of its card.
PressButton {
    id: chip

    required property WorkspaceCardData card
    required property var resource
    readonly property bool isRunning: resource ? resource.state === "running" : false
    readonly property bool isMissing: resource ? resource.isMissing : false
    readonly property bool isDisabled: resource ? !resource.isEnabled : false
    readonly property bool isMarked: resource ? resource.state === "startMarked" : false
    readonly property color stateColor: isRunning ? Theme.green : isMarked ? Theme.blue : Theme.gray
    // From 0, as it lies there, to 1, under the pointer.
    property real lift: hovered ? 1 : 0

    implicitWidth: action.x + action.width + 10
    implicitHeight: Theme.chipHeight
    visible: resource !== undefined
    text: resource ? resource.name : ""
    scale: 1 + 0.02 * lift
    opacity: down ? 0.75 : isDisabled && !isRunning ? 0.6 : 1
    Accessible.description: isMissing ? "Not found" : isRunning ? "Running" : isDisabled ? "Disabled" : ""
    onClicked: card.workspaces.pressChip(card.workspaceId, resource.key)

    Behavior on lift {
        NumberAnimation {
            duration: 150
            easing.type: Easing.InOutQuad
        }
    }
    OnDemand {
        parent: chip
        wanted: chip.hovered

        ThemedToolTip {
            // Asked for when it is needed, as the answer takes a look at the installed applications.
            text: chip.resource ? chip.card.workspaces.chipTooltip(chip.card.workspaceId, chip.resource.key) : ""
            visible: true
        }
    }
    OnDemand {
        parent: chip
        wanted: chip.lift > 0

        SoftShadow {
            anchors.fill: parent
            // Below the background.
            z: -2
            color: Theme.faded(Theme.primary, 0.1 * chip.lift)
            radius: Theme.smallRadius
        }
    }
    OnDemand {
        parent: chip.background
        wanted: chip.visualFocus

        FocusRing {
            target: chip
        }
    }

    SymbolText {
        x: 10
        width: 16
        height: parent.height
        symbol: chip.isMissing ? "exclamationmark.triangle.fill" : chip.resource ? chip.resource.symbol : ""
        size: 16
        color: chip.isMissing ? Theme.orange : Theme.typeColor(chip.resource ? chip.resource.type : "")
    }
    Text {
        id: title

        x: 10 + 16 + 8
        width: Math.min(implicitWidth, 80)
        height: parent.height
        verticalAlignment: Text.AlignVCenter
        text: chip.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        font.pixelSize: 14
        font.weight: Font.Medium
        font.strikeout: chip.isDisabled
        color: Theme.label
        Accessible.ignored: true
    }
    SymbolText {
        id: action

        x: title.x + title.width + 8
        width: 12
        height: parent.height
        symbol: chip.isRunning ? "stop.fill" : "play.fill"
        size: 12
        color: Theme.faded(chip.isRunning ? Theme.red : chip.hovered ? Theme.blue : Theme.secondaryLabel, 0.85 + 0.15 * chip.lift)
        scale: 1 + 0.1 * chip.lift
    }

    background: Rectangle {
        radius: Theme.smallRadius
        color: {
            if (chip.isRunning || chip.isMarked)
                return Theme.faded(chip.isRunning ? Theme.greenFill : Theme.blueFill, Theme.dark ? 0.3 : 0.15);
            return Theme.dark ? Theme.controlBackground : Theme.textBackground;
        }
        border.width: 1
        border.color: chip.isRunning || chip.isMarked ? Theme.faded(chip.stateColor, 0.5) : Theme.separator
    }
}
